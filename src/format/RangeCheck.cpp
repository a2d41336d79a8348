#include "format/RangeCheck.h"

#include "platform/desktop/MessageBoxes.h"
#include "platform/error/RunTimeError.h"
#include "platform/jet/Value.h"

using namespace Qt::StringLiterals;

namespace qvnd::format {

namespace {

bool isWithin(float number, const LengthRange& range) {
    return number >= range.least && number <= range.most;
}

void leaveBox(TextBox& box, const LengthRange& range, desktop::MessageBoxes& messages,
              const std::function<void()>& write) {
    if (isWithin(jet::singleOf(box.text()), range)) {
        write();
        return;
    }
    const QString refused = box.text();
    messages.tell(range.refusal, desktop::Icon::exclamation, u"警告"_s);
    box.setText(range.reset);
    box.setNote(range.noteOf(refused));
}

} // namespace

QString LengthRange::problemOf(const QString& text) const {
    try {
        return isWithin(jet::singleOf(text), *this) ? QString() : refusal;
    } catch (const RunTimeError& failure) {
        return desktop::descriptionOf(failure);
    }
}

QString LengthRange::noteOf(const QString& refused) const {
    return u"“%1”不在 %2 到 %3 厘米之间，现在是 %4；请改成需要的数，"
           "否则改动或离开这一页的其他框时就保存 %4。"_s.arg(refused)
               .arg(double{least})
               .arg(double{most})
               .arg(reset);
}

const LengthRange& pageLength() {
    static const LengthRange range{-55.87F, 55.87F, u"对不起，该范围必须在-55.87-55.87之间！"_s,
                                   u"0"_s};
    return range;
}

const LengthRange& pictureLength() {
    static const LengthRange range{0, 40, u"对不起，该范围必须在0-40之间！"_s, u"10"_s};
    return range;
}

void checkOnLeaving(TextBox& box, const LengthRange& range, desktop::MessageBoxes& messages,
                    const std::function<void()>& write) {
    box.Problem = [&range](const QString& text) { return range.problemOf(text); };
    box.LostFocus = [&box, &range, &messages, write] {
        try {
            leaveBox(box, range, messages, write);
        } catch (const RunTimeError& failure) {
            messages.tell(desktop::descriptionOf(failure));
        }
    };
}

} // namespace qvnd::format
