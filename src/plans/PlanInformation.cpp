#include "plans/PlanInformation.h"

#include "platform/error/IgnoringErrors.h"

namespace qvnd::plans {

QString informationTableOf(const QString& plan) { return plan + "Org"; }

QStringList readInformation(jet::Database& db, const QString& plan, PlanInformation& information) {
    const auto rs = db.OpenRecordset("SELECT  * FROM " + informationTableOf(plan));
    rs->MoveFirst();
    QStringList unread;
    const auto read = [&](const char16_t* field, auto& member, auto convert) {
        if (!ignoringErrors([&] { member = convert(rs->Get(field)); })) {
            unread << QString::fromUtf16(field);
        }
    };
    const auto text = [](const jet::Value& value) { return value.ToText(); };
    const auto day = [](const jet::Value& value) { return value.ToDate().date(); };
    read(u"建设单位", information.client, text);
    read(u"施工单位", information.contractor, text);
    read(u"编制人", information.author, text);
    read(u"审批人", information.approver, text);
    read(u"编制日期", information.date, day);
    read(u"注释", information.explanation, text);
    return unread;
}

void setInformation(jet::Recordset& rs, const PlanInformation& information) {
    rs.Set(u"建设单位", information.client);
    rs.Set(u"施工单位", information.contractor);
    rs.Set(u"编制人", information.author);
    rs.Set(u"审批人", information.approver);
    rs.Set(u"编制日期", information.date);
    rs.Set(u"注释", information.explanation);
}

} // namespace qvnd::plans
