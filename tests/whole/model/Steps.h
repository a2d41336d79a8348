#pragma once

#include "support/SeenOutline.h"
#include "whole/model/Snapshot.h"

#include <optional>
#include <random>

namespace qvnd::model {

// One command of a planner with its choices left open: they are taken from what is on the screen
// when it is done, so that a sequence still makes sense when some of its steps are left out.
struct Step {
    enum Kind {
        newPlan,
        deletePlan,
        clickPlan,
        restart,
        addFolder,
        addDocument,
        deleteNode,
        rename,
        doubleClick,
        drag,
        dropOutside,
        dragTemplate,
        copyPaste,
        paste,
        storeTemplate,
        deleteTemplate,
        browseTemplate,
        loseFile,
    };
    Kind kind = newPlan;
    unsigned a = 0;
    unsigned b = 0;
    bool yes = true;
    bool flag = false;
};

std::vector<Step> randomSteps(unsigned seed, int count);

// The number that a variable of the environment asks for, `otherwise` where it asks for none or for
// less than one.
int numberAskedFor(const char* variable, int otherwise);

// The program and the model side by side, in a folder of their own.
class SideBySide {
public:
    SideBySide();

    // Does the step on both; what has come to differ then, nothing when all is alike.
    QString run(const Step& step);
    // The steps done so far, for people.
    const QStringList& done() const { return done_; }

private:
    QString perform(const Step& step);
    QString performOnPlan(const Step& step);
    QString performOnLibrary(const Step& step);
    QString add(const Step& step, const QString& key);
    QString drag(const QString& key, const std::optional<QString>& target);
    test::SeenOutline seen();
    bool hasKeyOfItsOwn(const QString& key);
    QString loseFile(const Step& step);
    QString difference();
    QString differenceOfMessages();
    static QString nodeOf(const Tree& tree, unsigned number);
    QString file(unsigned number);

    test::Planner planner_;
    PlainProgram model_;
    RealSnapshots real_{planner_};
    QStringList done_;
    QString misplaced_; // what a move has put elsewhere than a planner would see it
    int files_ = 0;
};

} // namespace qvnd::model
