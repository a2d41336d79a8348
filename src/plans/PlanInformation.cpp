#include "plans/PlanInformation.h"

namespace qvnd::plans {

QString informationTableOf(const QString& plan) { return plan + "Org"; }

PlanInformation readInformation(jet::Database& db, const QString& plan) {
    const auto rs = db.OpenRecordset("SELECT  * FROM " + informationTableOf(plan));
    return {rs->Get(u"建设单位").ToText(),        rs->Get(u"施工单位").ToText(),
            rs->Get(u"编制人").ToText(),          rs->Get(u"审批人").ToText(),
            rs->Get(u"编制日期").ToDate().date(), rs->Get(u"注释").ToText()};
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
