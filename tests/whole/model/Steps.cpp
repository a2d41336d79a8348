#include "whole/model/Steps.h"

#include <gtest/gtest.h>

#include <QtGlobal>

#include <utility>

namespace qvnd::model {

namespace {

const QStringList planNames = {"甲",    "甲乙", "工程",  "A1",   "甲 乙",
                               "乙'丙", "10",   "甲Org", "[甲]", " 工程 "};
const QStringList nodeNames = {"章", "章",    "节", "说明", "文",    "a'b", "1",
                               "10", "[x]*?", "😀",  " ",    "图 一", "甲",  "章 "};
const QStringList fileTitles = {"文.doc", "说明.doc", "文.一.doc", "a'b.doc",  "图.doc",
                                "1.doc",  "😀.doc",    "章.DOC",    "说 明.doc"};

template <class List>
auto pick(const List& list, unsigned number) {
    return list[static_cast<int>(number % static_cast<unsigned>(list.size()))];
}

int iconOf(desktop::Icon icon) {
    switch (icon) {
    case desktop::Icon::information:
        return 1;
    case desktop::Icon::question:
        return 2;
    case desktop::Icon::exclamation:
        return 3;
    default:
        return 0;
    }
}

// The three central databases of a first start, made once for all sequences.
void writeDatabases(const test::TemporaryFolder& folder) {
    static const QStringList names = {"Sys/用户模板/Db_UsTemplate.mdb",
                                      "Sys/Database/Db_Template.mdb", "Sys/Database/Db_BidSet.mdb"};
    static const QList<QByteArray> contents = [] {
        test::Planner first;
        first.start();
        first.exit();
        QList<QByteArray> made;
        for (const QString& name : names) {
            made << first.folder.read(name);
        }
        return made;
    }();
    for (int i = 0; i < names.size(); ++i) {
        folder.write(names[i], contents[i]);
    }
}

// A move that every rule agrees on: not into itself, and not of a document with others below it,
// which keep their keys.
bool isPlainMove(const test::SeenOutline& outline, std::size_t node, std::size_t target) {
    return !test::isWithin(outline, target, node) &&
           !(outline[node].isDocument && test::endOf(outline, node) > node + 1);
}

} // namespace

std::vector<Step> randomSteps(unsigned seed, int count) {
    std::mt19937 random(seed);
    // How often each kind comes, in the order of Step::Kind.
    std::discrete_distribution<int> kinds(
        {3, 1, 4, 2, 14, 14, 5, 4, 3, 18, 2, 6, 3, 2, 3, 3, 2, 3});
    std::vector<Step> steps = {{Step::newPlan, 0, 0, true, false},
                               {Step::addFolder, 0, 0, true, false}};
    while (static_cast<int>(steps.size()) < count) {
        Step step;
        step.kind = static_cast<Step::Kind>(kinds(random));
        step.a = random();
        step.b = random();
        step.yes = random() % 3 != 0;
        step.flag = random() % 2 == 0;
        steps.push_back(step);
    }
    return steps;
}

int numberAskedFor(const char* variable, int otherwise) {
    const int number = qEnvironmentVariableIntValue(variable);
    return number > 0 ? number : otherwise;
}

SideBySide::SideBySide() : model_(planner_.folder.root()) {
    writeDatabases(planner_.folder);
    planner_.start();
    model_.start();
}

QString SideBySide::run(const Step& step) {
    planner_.messages.shown.clear();
    model_.told.clear();
    model_.yes = step.yes;
    try {
        done_ << perform(step) + (step.yes ? "" : " (no)");
    } catch (const Failure& failure) {
        return "the model fails with " + QString::number(failure.number);
    } catch (const RunTimeError& failure) {
        return "the program fails with " + QString::fromStdU16String(failure.description());
    }
    return difference();
}

QString SideBySide::nodeOf(const Tree& tree, unsigned number) {
    if (tree.nodes.empty()) {
        return {};
    }
    return std::next(tree.nodes.begin(), number % static_cast<unsigned>(tree.nodes.size()))->key;
}

QString SideBySide::perform(const Step& step) {
    switch (step.kind) {
    case Step::newPlan: {
        const QString name = pick(planNames, step.a % 3 ? step.b % 4 : step.b);
        planner_.newPlan(name, step.yes);
        model_.newPlan(name);
        return "new plan " + name;
    }
    case Step::deletePlan: {
        const QString key = step.flag ? nodeOf(model_.current, 0) : nodeOf(model_.current, step.a);
        if (!key.isEmpty()) {
            planner_.click(key);
            model_.click(key);
        }
        planner_.deletePlan(step.yes);
        model_.deletePlan();
        return "delete the plan, clicked " + key;
    }
    case Step::restart:
        planner_.restart();
        model_.exit();
        model_.start();
        return "restart";
    case Step::clickPlan:
    case Step::dragTemplate:
    case Step::copyPaste:
    case Step::paste:
    case Step::storeTemplate:
    case Step::deleteTemplate:
    case Step::browseTemplate:
        return performOnLibrary(step);
    case Step::loseFile:
        return loseFile(step);
    default:
        return performOnPlan(step);
    }
}

QString SideBySide::performOnPlan(const Step& step) {
    const QString key = nodeOf(model_.current, step.a);
    if (key.isEmpty()) {
        return "nothing";
    }
    planner_.click(key);
    model_.click(key);
    switch (step.kind) {
    case Step::addFolder:
    case Step::addDocument:
        return add(step, key);
    case Step::deleteNode:
        if (depthOf(key) == 0 && step.b % 3) {
            return "click " + key;
        }
        planner_.deleteNode(step.yes);
        model_.deleteNode();
        return "delete " + key;
    case Step::rename: {
        const QString text = step.b % 10 ? pick(nodeNames, step.b) : QString();
        planner_.rename(text);
        model_.rename(text);
        return "rename " + key + " to '" + text + "'";
    }
    case Step::doubleClick:
        planner_.doubleClick();
        model_.doubleClick();
        return "double click " + key;
    default: {
        const std::optional<QString> target = step.kind == Step::dropOutside
                                                  ? std::nullopt
                                                  : std::optional(nodeOf(model_.current, step.b));
        return drag(key, target);
    }
    }
}

QString SideBySide::drag(const QString& key, const std::optional<QString>& target) {
    const test::SeenOutline before = seen();
    const QStringList keys = test::OutlineWorld::shown(planner_.current());
    const auto from = static_cast<std::size_t>(keys.indexOf(key));
    const auto to = static_cast<std::size_t>(keys.indexOf(target.value_or(key)));
    const bool isPlain = isPlainMove(before, from, to) && hasKeyOfItsOwn(key);
    const bool isDone = planner_.drag(key, target).done;
    // The planner's drag begins with a click of its own.
    model_.click(key);
    model_.startDrag();
    model_.drop(target);
    if (isPlain && isDone && seen() != test::moved(before, from, to)) {
        misplaced_ =
            "the planner sees" + QString::fromStdString(testing::PrintToString(seen())) + '\n';
    }
    return "drag " + key + " to " + target.value_or("nowhere");
}

test::SeenOutline SideBySide::seen() {
    return test::seenIn(planner_.current(), [this](const QString& key) {
        return planner_.folder.read("Sys/用户模板/" + tableOf(key) + "/" + key + ".doc");
    });
}

// Does the tree show the rows of its plan, and does the key stand in no other one but at its
// beginning?
bool SideBySide::hasKeyOfItsOwn(const QString& key) {
    const QString plan = tableOf(key);
    if (model_.currentPlan != plan || !model_.user.outlines.contains(plan)) {
        return false;
    }
    const std::vector<Row>& rows = model_.user.outlines[plan].rows;
    return rows.size() == model_.current.nodes.size() &&
           std::all_of(rows.begin(), rows.end(), [&](const Row& row) {
               return model_.current.find(row.key) && row.key.lastIndexOf(key) <= 0;
           });
}

QString SideBySide::add(const Step& step, const QString& key) {
    const bool isBeside = step.flag;
    const auto mode = isBeside ? outline::AddMode::beside : outline::AddMode::below;
    const QString where = isBeside ? " beside " : " below ";
    if (step.kind == Step::addFolder) {
        const QString name = pick(nodeNames, step.b);
        planner_.addFolder(mode, name);
        model_.addFolder(isBeside, name);
        return "add folder '" + name + "'" + where + key;
    }
    const QString path = file(step.b);
    const auto content =
        planner_.folder.exists(path) ? std::optional(planner_.folder.read(path)) : std::nullopt;
    planner_.addDocument(mode, planner_.folder.path(path), step.yes);
    model_.addDocument(isBeside, planner_.folder.path(path), content);
    return "add document " + path + (content ? "" : " (missing)") + where + key;
}

// Every fifth is not there; the others have a text that no other has.
QString SideBySide::file(unsigned number) {
    const QString folder = "files/" + QString::number(++files_) + "/";
    QString path = folder + pick(fileTitles, number);
    if (number % 5) {
        planner_.folder.write(path, "text " + QByteArray::number(files_));
    }
    return path;
}

QString SideBySide::performOnLibrary(const Step& step) {
    const QString key =
        nodeOf(step.kind == Step::clickPlan ? model_.plans : model_.templates, step.a);
    const QString target = nodeOf(model_.current, step.b);
    if (step.kind == Step::storeTemplate) {
        planner_.storeTemplate();
        model_.storeTemplate();
        return "store as template";
    }
    if (step.kind == Step::paste) {
        planner_.paste(step.yes);
        model_.paste();
        return "paste";
    }
    if (key.isEmpty()) {
        return "nothing";
    }
    if (step.kind == Step::clickPlan) {
        planner_.clickPlan(key);
        model_.clickPlan(key);
        return "click plan " + key;
    }
    planner_.pressTemplate(key);
    model_.pressTemplate(key);
    switch (step.kind) {
    case Step::dragTemplate:
        if (target.isEmpty()) {
            return "press template " + key;
        }
        planner_.drop(target, step.yes);
        model_.drop(target);
        return "drag template " + key + " to " + target;
    case Step::copyPaste:
        planner_.copy();
        model_.copy();
        if (target.isEmpty()) {
            return "copy " + key;
        }
        planner_.click(target);
        model_.click(target);
        planner_.paste(step.yes);
        model_.paste();
        return "copy " + key + " and paste to " + target;
    case Step::deleteTemplate:
        planner_.deleteTemplate(step.yes);
        model_.deleteTemplate();
        return "delete template " + key;
    default:
        planner_.browseTemplate();
        model_.browseTemplate();
        return "browse template " + key;
    }
}

// A document's file disappears behind the program's back.
QString SideBySide::loseFile(const Step& step) {
    auto& folders = step.flag ? model_.planFolders : model_.templateFolders;
    const QStringList names = folders.keys();
    if (names.isEmpty()) {
        return "nothing";
    }
    auto& files = folders[pick(names, step.a)].files;
    if (files.isEmpty()) {
        return "nothing";
    }
    const QString name = pick(files.keys(), step.b);
    files.remove(name);
    const QString path =
        QString(step.flag ? "Sys/用户模板/" : "Sys/标书模板/") + pick(names, step.a) + "/" + name;
    QFile::remove(planner_.folder.path(path));
    return "lose " + path;
}

QString SideBySide::difference() {
    const Snapshot expected = snapshotOf(model_);
    const Snapshot found = real_.take();
    QString told = std::exchange(misplaced_, {}) + differenceOfMessages();
    if (expected == found) {
        return told;
    }
    for (const QString& name : (expected.keys() + found.keys())) {
        if (expected.value(name) != found.value(name) ||
            expected.contains(name) != found.contains(name)) {
            return told + name + " should be\n    " +
                   expected.value(name, {"not there"}).join("\n    ") + "\n  and is\n    " +
                   found.value(name, {"not there"}).join("\n    ") + "\n";
        }
    }
    return told;
}

QString SideBySide::differenceOfMessages() {
    QStringList expected;
    QStringList found;
    const auto& shown = planner_.messages.shown;
    bool isAlike = shown.size() == model_.told.size();
    for (const Told& told : model_.told) {
        expected << (told.anything
                         ? "some failure"
                         : told.text + " " + QString::number(told.icon) + " " + told.title);
    }
    for (std::size_t i = 0; i < shown.size(); ++i) {
        found << shown[i].text + " " + QString::number(iconOf(shown[i].icon)) + " " +
                     shown[i].title;
        isAlike =
            isAlike && (model_.told[i].anything || expected[static_cast<int>(i)] == found.back());
    }
    return isAlike ? QString()
                   : "messages should be\n    " + expected.join("\n    ") + "\n  and are\n    " +
                         found.join("\n    ") + "\n";
}

} // namespace qvnd::model
