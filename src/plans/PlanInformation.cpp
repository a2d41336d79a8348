#include "plans/PlanInformation.h"

#include "platform/error/IgnoringErrors.h"
#include "store/Names.h"

namespace qvnd::plans {

namespace field = store::field;

QStringList readInformation(jet::Database& db, const QString& plan, PlanInformation& information) {
    const auto rs = db.OpenRecordset("SELECT  * FROM " + store::informationTableOf(plan));
    rs->MoveFirst();
    QStringList unread;
    const auto read = [&](QStringView name, auto& member, auto convert) {
        if (!ignoringErrors([&] { member = convert(rs->Get(name)); })) {
            unread << name.toString();
        }
    };
    const auto text = [](const jet::Value& value) { return value.ToText(); };
    const auto day = [](const jet::Value& value) { return value.ToDate().date(); };
    read(field::client, information.client, text);
    read(field::contractor, information.contractor, text);
    read(field::author, information.author, text);
    read(field::approver, information.approver, text);
    read(field::planDate, information.date, day);
    read(field::note, information.explanation, text);
    return unread;
}

void setInformation(jet::Recordset& rs, const PlanInformation& information) {
    rs.Set(field::client, information.client);
    rs.Set(field::contractor, information.contractor);
    rs.Set(field::author, information.author);
    rs.Set(field::approver, information.approver);
    rs.Set(field::planDate, information.date);
    rs.Set(field::note, information.explanation);
}

} // namespace qvnd::plans
