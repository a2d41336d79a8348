#include "outline/NodeCommands.h"

#include "outline/OutlineTree.h"

#include <gtest/gtest.h>

using namespace qvnd::outline;

namespace {

struct OfferedCommands : testing::Test {
    OutlineTree tree{"TrvCurrent"};

    OfferedCommands() {
        tree.Add("T", "T", image::root, image::rootSelected);
        tree.AddChild("T", "T.1", "夹", image::folder, image::folderSelected);
        tree.AddChild("T.1", "T.1.1", "档", image::document, image::documentSelected);
        tree.AddChild("T.1.1", "T.1.1.1", "档下档", image::document, image::documentSelected);
    }
    NodeCommands of(const char* key, bool isDocument) {
        return commandsOf(tree.Item(QString(key)), isDocument);
    }
};

TEST_F(OfferedCommands, ARootOffersOnlyWhatGoesBelowItDeletingAndStoring) {
    for (const bool isDocument : {false, true}) {
        const auto root = of("T", isDocument);
        EXPECT_FALSE(root.mnuBrowseDoc || root.mnuEQFolder || root.mnuEQDoc || root.mnuRename);
        EXPECT_TRUE(root.mnuLTFolder && root.mnuAddDoc && root.mnuLTDoc && root.mnuEditDelete &&
                    root.mnuSaveTemplate);
    }
}

TEST_F(OfferedCommands, AFolderOffersAllButBrowsing) {
    const auto folder = of("T.1", false);
    EXPECT_FALSE(folder.mnuBrowseDoc);
    EXPECT_TRUE(folder.mnuEQFolder && folder.mnuLTFolder && folder.mnuAddDoc && folder.mnuEQDoc &&
                folder.mnuLTDoc && folder.mnuRename && folder.mnuEditDelete &&
                folder.mnuSaveTemplate);
}

TEST_F(OfferedCommands, ADocumentUnderAFolderMayHaveAFolderBesideItButNotBelow) {
    const auto document = of("T.1.1", true);
    EXPECT_TRUE(document.mnuBrowseDoc && document.mnuEQFolder && document.mnuEQDoc &&
                document.mnuLTDoc && document.mnuRename);
    EXPECT_FALSE(document.mnuLTFolder);
}

TEST_F(OfferedCommands, ADocumentUnderADocumentOffersNoFolderAtAll) {
    const auto document = of("T.1.1.1", true);
    EXPECT_FALSE(document.mnuEQFolder || document.mnuLTFolder);
    EXPECT_TRUE(document.mnuEQDoc && document.mnuLTDoc);
}

TEST_F(OfferedCommands, ADocumentThatIsARootWithAKeyOfItsOwnMayHaveAFolderBesideIt) {
    tree.Add("U.5", "收入的", image::root, image::rootSelected);
    const auto adopted = of("U.5", true);
    EXPECT_TRUE(adopted.mnuBrowseDoc && adopted.mnuEQFolder && adopted.mnuEQDoc);
    EXPECT_FALSE(adopted.mnuLTFolder);
}

} // namespace
