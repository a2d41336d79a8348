#pragma once

#include "whole/model/PlainTree.h"

namespace qvnd::model {

// A box as a rule states it. Where a rule leaves the text to the failing part, `anything` is set.
struct Told {
    QString text;
    int icon = 0; // 0 none, 1 information, 2 question, 3 exclamation
    QString title;
    bool anything = false;
};

// The rules of the outline, plan and template commands over plain values. A command answers
// questions with `yes`; what it shows stands in `told`.
class PlainProgram {
public:
    // `home` is the program folder, with a separator at its end, for the texts that name paths.
    explicit PlainProgram(QString home) : home_(std::move(home)) {}

    Database user;
    Database library;
    std::optional<QString> currentPlan; // 当前表
    std::optional<std::vector<Row>> temp = std::vector<Row>();
    QMap<QString, Folder> planFolders;
    QMap<QString, Folder> templateFolders;
    Tree current;
    Tree templates;
    Tree plans;
    std::vector<Told> told;
    bool yes = true;

    // Leaving the program and starting it again.
    void exit();
    void start();

    void newPlan(const QString& typed);
    void deletePlan();
    void clickPlan(const QString& key);

    void click(const QString& key);
    void addFolder(bool beside, const QString& name);
    // `file` is the path chosen, `content` what is in it, nothing when it is not there.
    void addDocument(bool beside, const QString& file, const std::optional<QByteArray>& content);
    void deleteNode();
    void rename(const QString& text);
    void doubleClick();

    void startDrag();
    void drop(const std::optional<QString>& target);

    void pressTemplate(const QString& key);
    void copy();
    void paste();
    void storeTemplate();
    void deleteTemplate();
    void browseTemplate();

private:
    enum class Copied { copied, incomplete, stopped };

    QString plansPath() const { return home_ + "Sys/用户模板/"; }
    QString templatesPath() const { return home_ + "Sys/标书模板/"; }
    void tell(const QString& text, int icon = 0, const QString& title = {}) {
        told.push_back({text, icon, title, false});
    }
    void tellFailure() { told.push_back({{}, 0, {}, true}); }
    bool ask(const QString& text, int icon, const QString& title = {}) {
        tell(text, icon, title);
        return yes;
    }

    void refreshPlans(bool keepMissing = false);
    void refreshTemplates();
    void refresh(Database& database, Tree& tree, QMap<QString, Folder>& folders, bool isTemplates,
                 bool keepMissing);
    void load();
    void adoptPlans();
    void adoptTemplates();
    void saveCurrentPlan();
    Database& copyOf(const QString& plan);

    bool createPlan(const QString& name);
    void createTables(const QString& name);

    QString newKeyIn(Table& table, int base, const QString& parent);
    int takeOut(Table& table, const QString& behindKey);
    void putBack(Table& table);
    void addFolderTo(bool beside, const QString& name);
    void addDocumentTo(bool beside, const QString& file, const std::optional<QByteArray>& content);
    void deleteWholePlan(const QString& plan);
    void deleteSubtree(const QString& plan, const QString& key);
    Node* removeNode(const QString& key);
    void showWhatStands(const QString& key);

    Copied dragDrop(const QString& targetKey, const QString& sourceKey, Node* source);
    Copied copyNode(const QString& targetKey, const QString& sourceKey, Node* given);
    Copied copyFolder(const QString& targetKey, const Node& source);
    Copied copyDocument(const QString& targetKey, const QString& sourceKey, const Node& source);
    Copied copyChildren(const QString& targetKey, const Node& source);
    void copyFile(const QString& sourceKey, const QString& plan, const QString& name);

    void move(Node& target);
    bool movePlan(const QString& plan, Node& target);
    void storePlan(const QString& plan);

    QString home_;
    QString selectedPlan_;
    QString clickedKey_;
    QString dragKey_;
    int dragIndex_ = 0;
    QString copySourceKey_;
    int dropTargetImage_ = 0;
};

} // namespace qvnd::model
