#include "platform/word/layout/PageModel.h"

namespace qvnd::layout {

void Layer::append(const Layer& other, double right, double down) {
    for (Fill fill : other.fills) {
        fill.x += right;
        fill.y += down;
        fills.push_back(fill);
    }
    for (TextArt art : other.textArt) {
        art.x += right;
        art.y += down;
        textArt.push_back(std::move(art));
    }
    for (Outline outline : other.outlines) {
        for (PathPoint& point : outline.path.points) {
            point.x += right;
            point.y += down;
        }
        outlines.push_back(std::move(outline));
    }
    for (PlacedPicture picture : other.pictures) {
        picture.x += right;
        picture.y += down;
        pictures.push_back(std::move(picture));
    }
    for (Rule rule : other.rules) {
        rule.x1 += right;
        rule.x2 += right;
        rule.y1 += down;
        rule.y2 += down;
        rules.push_back(rule);
    }
    for (PlacedText text : other.texts) {
        text.x += right;
        text.baseline += down;
        texts.push_back(std::move(text));
    }
}

} // namespace qvnd::layout
