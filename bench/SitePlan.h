#pragma once

#include "SiteDocument.h"

#include "format/ChildDocumentControls.h"
#include "outline/TreeLoading.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/files/DiskFileSystem.h"
#include "platform/files/Paths.h"
#include "platform/word/engine/EngineServices.h"
#include "store/DatabaseCreation.h"
#include "store/PlanTables.h"

#include <QTemporaryDir>

#include <filesystem>
#include <vector>

namespace qvnd::bench {

class NoControls : public format::ChildDocumentControls {
public:
    QString cboBianHao() override { return {}; }
    QString txtInde() override { return QStringLiteral("2"); }
};

class NoQuestion : public word::UnsavedChangesQuestion {
public:
    bool save(const std::filesystem::path& /*document*/) override { return false; }
};

// A message would mean that something went wrong: it ends the benchmark.
class Complaints : public desktop::MessageBoxes, public word::ImportReport {
public:
    desktop::Answer show(const desktop::Message& message) override {
        texts << message.text;
        return desktop::Answer::ok;
    }
    void notCarried(const std::filesystem::path& /*path*/, std::u16string_view what) override {
        texts << QString::fromUtf16(what.data(), static_cast<qsizetype>(what.size()));
    }
    QStringList texts;
};

// The plan 工程, open, with so many documents, ten to a chapter, of so many parts each: its table,
// its files and the first settings in a folder of its own.
class SitePlan {
public:
    explicit SitePlan(int documents, int parts = SiteDocument::usualParts) {
        const QString root = files::withSeparator(home_.path());
        for (const char* folder : {"work", "plans/工程", "copies"})
            std::filesystem::create_directories(files::toPath(root + QString::fromUtf8(folder)));
        program_.AppPath = home_.path();
        program_.gAppPath = root;
        program_.gWorkPath = files::withSeparator(root + QStringLiteral("work"));
        program_.gUserTplPath = files::withSeparator(root + QStringLiteral("plans"));
        program_.gFso = std::make_unique<files::DiskFileSystem>();
        program_.gWs = &program_.DBEngine.Workspaces(0);
        store::CreateBidSetDb(program_, root + QStringLiteral("Db_BidSet.mdb"), QDate(2026, 5, 1));
        store::CreateUserDb(program_, program_.gUserTplPath + QStringLiteral("Db_UsTemplate.mdb"));
        fill(documents, parts);
    }

    modMain& program() { return program_; }
    const outline::OutlineTree& TrvEdit() const { return TrvEdit_; }
    void copyDocuments() const {
        const auto target = files::toPath(program_.gAppPath + QStringLiteral("copies"));
        for (const auto& document : documents_)
            std::filesystem::copy_file(document, target / document.filename(),
                                       std::filesystem::copy_options::overwrite_existing);
    }
    double documentBytes() const {
        return static_cast<double>(std::filesystem::file_size(documents_.front()));
    }
    double outputBytes() const {
        return static_cast<double>(std::filesystem::file_size(
            files::toPath(program_.gWorkPath + QStringLiteral("施工方案.doc"))));
    }

private:
    void fill(int documents, int parts) {
        const QString plan = QStringLiteral("工程");
        const auto current =
            program_.gDbUser->OpenRecordset(QStringLiteral("Select * from 当前表"));
        current->AddNew();
        current->Set(u"名称", plan);
        current->Update();
        program_.gDbUser->TableDefs().Append(store::outlineTable(plan));
        const auto rows = program_.gDbUser->OpenRecordset(QStringLiteral("Select * from 工程"));
        add(*rows, plan, plan, false);
        QString chapter;
        for (int i = 0; i < documents; ++i) {
            if (i % 10 == 0) {
                chapter = QStringLiteral("工程.%1").arg(i / 10 + 1);
                add(*rows, chapter, QStringLiteral("分部工程"), false);
            }
            const QString key = chapter + QStringLiteral(".%1").arg(i % 10 + 1);
            add(*rows, key, QStringLiteral("施工方法"), true);
            documents_.push_back(files::toPath(program_.gUserTplPath + QStringLiteral("工程/") +
                                               key + QStringLiteral(".doc")));
            SiteDocument(i + 1, parts).saveAs(documents_.back());
        }
        outline::FillOutlineTree(
            *program_.gDbUser->OpenRecordset(QStringLiteral("Select * from 工程 order by ID asc")),
            TrvEdit_);
    }
    static void add(jet::Recordset& rows, const QString& key, const QString& name,
                    bool isDocument) {
        rows.AddNew();
        rows.Set(u"名称", name);
        rows.Set(u"Key", key);
        rows.Set(u"是否文档", isDocument ? QStringLiteral("是") : QStringLiteral("否"));
        rows.Update();
    }

    QTemporaryDir home_;
    modMain program_;
    std::vector<std::filesystem::path> documents_;
    outline::OutlineTree TrvEdit_{QStringLiteral("TrvEdit")};
};

} // namespace qvnd::bench
