#include "fuzz/SettingsTargets.h"

#include "platform/error/RunTimeError.h"
#include "platform/jet/legacy/JetFileReader.h"
#include "platform/jet/legacy/TableStream.h"
#include "platform/registry/RegistryText.h"
#include "platform/registry/W_R_InI_File.h"
#include "support/Files.h"
#include "support/GenuineJet.h"

using namespace Qt::StringLiterals;

namespace qvnd::test {

namespace {

using word::Bytes;
using word::ByteView;

QByteArray fromView(ByteView bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size())};
}

Bytes toBytes(const QByteArray& bytes) { return {bytes.begin(), bytes.end()}; }

// Any bytes are a registry: what is written into it must be read back, and the rest stay.
class RegistryTarget : public FuzzTarget {
public:
    Outcome run(ByteView file) override {
        const QString key = u"HKEY_LOCAL_MACHINE\\Software\\TREL\\MAIN\\PATH"_s;
        const registry::Value written{registry::ValueType::number, QByteArray("\1\2\3\4")};
        registry::RegistryText text = registry::RegistryText::parse(fromView(file));
        Outcome outcome{text.hasKey(key), {}};
        const QByteArray first = text.bytes();
        if (registry::RegistryText::parse(first).bytes() != first) {
            outcome.fault += " is changed by reading it";
        }
        text.setValue(key, u"cfg"_s, written);
        if (registry::RegistryText::parse(text.bytes()).value(key, u"cfg"_s) != written) {
            outcome.fault += " loses what is written";
        }
        text.removeValue(key, u"cfg"_s);
        if (registry::RegistryText::parse(text.bytes()).value(key, u"cfg"_s)) {
            outcome.fault += " keeps what is taken away";
        }
        return outcome;
    }
    std::vector<Bytes> ownFiles() const override {
        const QString text = u"Windows Registry Editor Version 5.00\r\n\r\n"
                             u"[HKEY_LOCAL_MACHINE\\Software\\TREL\\MAIN\\PATH]\r\n"
                             u"\"cfg\"=\"D:\\\\工程\"\r\n@=dword:00000001\r\n"
                             u"\"long\"=hex:01,02,\\\r\n  03\r\n[-HKEY_USERS\\a]\r\n; 注释\r\n"_s;
        QByteArray wide("\xFF\xFE");
        wide.append(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
        return {toBytes(wide), toBytes(text.toUtf8()),
                toBytes("REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\a]\r\n\"\xB9\xA4\"=\"b\"\r\n")};
    }
};

class ProfileTarget : public FuzzTarget {
public:
    Outcome run(ByteView file) override {
        folder_.write("cfgpath", fromView(file));
        registry::W_R_InI_File profile;
        profile.ProfileFile = folder_.path("cfgpath");
        profile.Section = u"目录"_s;
        Outcome outcome{!profile.GetString(u"work"_s, {}).isEmpty(), {}};
        const QString written = u"D:\\工程"_s;
        if (profile.WriString(u"work"_s, written) && profile.GetString(u"work"_s, {}) != written) {
            outcome.fault += " loses what is written";
        }
        return outcome;
    }
    std::vector<Bytes> ownFiles() const override {
        const QString text = u"; 注释\r\n[目录]\r\nwork=\"D:\\方案\"\r\nother = x \r\n[b]\r\n"_s;
        QByteArray wide("\xFF\xFE");
        wide.append(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
        return {toBytes(text.toUtf8()), toBytes(wide),
                toBytes("[\xC4\xBF\xC2\xBC]\r\nwork=D:\\\xB7\xBD\xB0\xB8\r\n")};
    }

private:
    TemporaryFolder folder_;
};

jet::legacy::LegacyTable sampleTable() {
    jet::legacy::LegacyTable table;
    table.Name = u"工程"_s;
    table.Fields = {jet::TableDef::CreateField(u"名称"_s, jet::FieldType::Text),
                    jet::TableDef::CreateField(u"ID"_s, jet::FieldType::Long)};
    table.Rows = {{jet::Value(u"概况"_s), jet::Value(std::int32_t{1})},
                  {jet::Value(), jet::Value(std::int32_t{2})}};
    return table;
}

// A damaged file gives whole tables or an error with a number, never an end of the program.
class JetTarget : public FuzzTarget {
public:
    Outcome run(ByteView file) override {
        folder_.write("old.mdb", fromView(file));
        const QString path = folder_.path("old.mdb");
        const jet::legacy::JetFileReader reader;
        if (!reader.Recognizes(path)) {
            return {};
        }
        try {
            const auto database = reader.Open(path);
            for (const QString& name : database->TableNames()) {
                const jet::legacy::LegacyTable table = database->Table(name);
                for (const auto& row : table.Rows) {
                    if (row.size() != table.Fields.size()) {
                        return {true, " gave a row that is not whole"};
                    }
                }
            }
            return {true, {}};
        } catch (const RunTimeError&) {
            return {};
        }
    }
    std::vector<Bytes> ownFiles() const override {
        return {toBytes(GenuineJet({sampleTable()}).bytes())};
    }

private:
    TemporaryFolder folder_;
};

class PipeTarget : public FuzzTarget {
public:
    Outcome run(ByteView file) override {
        const QByteArray bytes = fromView(file);
        const auto table = jet::legacy::tableIn(bytes);
        const auto names = jet::legacy::namesIn(bytes);
        Outcome outcome{table.has_value() || names.has_value(), {}};
        if (table) {
            for (const auto& row : table->Rows) {
                outcome.fault += row.size() == table->Fields.size() ? "" : " gave a broken row";
            }
        }
        if (names && jet::legacy::namesIn(jet::legacy::bytesOf(*names)) != names) {
            outcome.fault += " changed a name";
        }
        return outcome;
    }
    std::vector<Bytes> ownFiles() const override {
        return {toBytes(jet::legacy::bytesOf(sampleTable())),
                toBytes(jet::legacy::bytesOf(QStringList{u"工程"_s, u"附则"_s}))};
    }
};

} // namespace

std::vector<std::string> settingsTargets() { return {"registry", "profile", "jet", "pipe"}; }

std::unique_ptr<FuzzTarget> settingsTarget(const std::string& name) {
    if (name == "registry") {
        return std::make_unique<RegistryTarget>();
    }
    if (name == "profile") {
        return std::make_unique<ProfileTarget>();
    }
    if (name == "jet") {
        return std::make_unique<JetTarget>();
    }
    return name == "pipe" ? std::make_unique<PipeTarget>() : nullptr;
}

} // namespace qvnd::test
