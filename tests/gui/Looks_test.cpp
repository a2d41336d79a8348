#include "gui/support/WorkbenchWindow.h"
#include "outline/windows/OutlineIcons.h"

#include <QImage>

namespace qvnd::test {
namespace {

using outline::commandIcon;
using outline::outlineIcon;

constexpr QSize iconSize(20, 20);

QImage drawn(const QIcon& icon, QIcon::Mode mode = QIcon::Normal) {
    return icon.pixmap(iconSize, mode).toImage().convertToFormat(QImage::Format_ARGB32);
}

// The share of the pixels that clearly differ.
double difference(const QImage& one, const QImage& other) {
    int differing = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QColor a = one.pixelColor(x, y);
            const QColor b = other.pixelColor(x, y);
            const int apart = qAbs(a.red() - b.red()) + qAbs(a.green() - b.green()) +
                              qAbs(a.blue() - b.blue()) + qAbs(a.alpha() - b.alpha());
            differing += apart > 120 ? 1 : 0;
        }
    }
    return double(differing) / (one.width() * one.height());
}

TEST(Looks, ASelectedIconKeepsItsColours) {
    for (int image = 1; image <= 6; ++image) {
        EXPECT_EQ(drawn(outlineIcon(image), QIcon::Selected), drawn(outlineIcon(image))) << image;
    }
}

TEST(Looks, TheFourAddingIconsDifferAtAGlance) {
    const QStringList names{"folder-beside", "folder-below", "document-beside", "document-below"};
    for (qsizetype i = 0; i < names.size(); ++i) {
        for (qsizetype j = 0; j < i; ++j) {
            EXPECT_GT(difference(drawn(commandIcon(names[i])), drawn(commandIcon(names[j]))), 0.25)
                << names[i].toStdString() << " and " << names[j].toStdString();
        }
    }
}

class SelectionLooks : public WorkbenchWindow {
protected:
    QColor ofRow(outline::OutlineView& view) {
        const QRect row = view.visualRect(view.currentIndex());
        return view.viewport()->grab().toImage().pixelColor(row.right() - 3, row.center().y());
    }
};

TEST_F(SelectionLooks, TheSelectionIsColouredWithTheKeyboardAndGreyWithout) {
    open("T.1");
    form->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
    click(trvTemplate(), "M");
    for (outline::OutlineView* view : {&trvCurrent(), &trvTemplate()}) {
        view->setFocus();
        const QColor with = ofRow(*view);
        (view == &trvCurrent() ? trvTemplate() : trvCurrent()).setFocus();
        const QColor without = ofRow(*view);
        EXPECT_GT(with.saturation(), 100) << view->objectName().toStdString();
        EXPECT_LT(without.saturation(), 20) << view->objectName().toStdString();
        EXPECT_LT(without.lightness(), 235) << "it must be told from the paper";
    }
}

} // namespace
} // namespace qvnd::test
