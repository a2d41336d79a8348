#include "generate/SettingsProof.h"

#include "store/DatabaseCreation.h"

#include <fstream>

using namespace Qt::StringLiterals;

namespace qvnd::test {

SettingsProof::SettingsProof() {
    std::filesystem::create_directory(place("plans") / u"工程");
    program.gDbBidSet.reset();
    program.gWs = &workspace;
    store::CreateBidSetDb(program, program.gAppPath + u"first.mdb"_s, QDate(2026, 5, 1));
    folder(u"工程.1"_s, u"施工部署"_s);
    documentWith(u"工程.1.1"_s, u"编制说明"_s, u"说明正文");
    documentWith(u"工程.1.1.1"_s, u"编制依据"_s, u"依据正文");
    folder(u"工程.2"_s, u"附则"_s);
}

void SettingsProof::documentWith(const QString& key, const QString& text,
                                 std::u16string_view words) {
    document(key, text);
    word::EngineApplication writer(engine);
    word::Document& file = writer.documents().Add();
    writer.Selection().TypeText(words);
    file.SaveAs(place("plans") / u"工程" / (key + u".doc"_s).toStdU16String());
}

DocumentProbe SettingsProof::generated() {
    window.AfterNodeFlag = true;
    word::EngineApplicationFactory real(engine);
    const generate::GenerationServices platform{real,    messages, dlgTB,   events,
                                                windows, screen,   controls};
    EXPECT_EQ(generate::BuildBid({program, switches, word}, platform, window, TrvEdit),
              generate::BuildOutcome::finished);
    return DocumentProbe(place("work") / u"施工方案.doc");
}

void SettingsProof::prove(const QString& table, const std::vector<Change>& changes) {
    for (const Change& each : changes) {
        SCOPED_TRACE((table + u'.' + each.field).toStdString());
        EXPECT_EQ(each.ask(generated()), each.before);
        const auto rows = settings().OpenRecordset(u"Select * from [%1]"_s.arg(table));
        const jet::Value earlier = rows->Get(each.field);
        change(settings(), table, each.field, each.value);
        EXPECT_EQ(each.ask(generated()), each.after);
        change(settings(), table, each.field, earlier);
    }
    EXPECT_EQ(linesOf("message"), "");
}

void SettingsProof::keepPicture(const QString& name, word::ByteView bytes) {
    const auto folderOfPictures = place("app") / u"sys" / u"图片库";
    std::filesystem::create_directories(folderOfPictures);
    std::ofstream file(folderOfPictures / name.toStdU16String(), std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

} // namespace qvnd::test
