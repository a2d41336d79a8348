#pragma once

#include <QString>

#include <cstddef>
#include <vector>

namespace qvnd::outline {

// Image numbers tell the kind of a node; other rooms test them.
namespace image {
inline constexpr int root = 1;
inline constexpr int rootSelected = 2;
inline constexpr int folderSelected = 3;
inline constexpr int folder = 4;
inline constexpr int document = 5;
inline constexpr int documentSelected = 6;
} // namespace image

// One node of an OutlineTree. The tree owns it and makes every change; the address holds until
// the node is removed.
class OutlineNode {
public:
    const QString& Key() const { return key_; }
    const QString& Text() const { return text_; }
    int Image() const { return image_; }
    bool isDocument() const { return image_ == image::document; }
    int SelectedImage() const { return selectedImage_; }
    bool Expanded() const { return expanded_; }

    // The place in the order of adding, counted from 1 over the whole tree.
    int Index() const { return index_; }
    // The place among the siblings, counted from 0.
    int row() const { return row_; }

    // Null for a top-level node.
    OutlineNode* Parent() const { return parent_; }
    // The first child; null without children.
    OutlineNode* Child() const { return children_.empty() ? nullptr : children_.front(); }
    // The number of children.
    int Children() const { return static_cast<int>(children_.size()); }
    const std::vector<OutlineNode*>& childList() const { return children_; }

private:
    friend class OutlineTree;

    QString key_;
    QString text_;
    int image_ = 0;
    int selectedImage_ = 0;
    bool expanded_ = false;
    int index_ = 0;
    int row_ = 0;
    OutlineNode* parent_ = nullptr;
    std::vector<OutlineNode*> children_;
};

} // namespace qvnd::outline
