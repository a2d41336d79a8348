#pragma once

#include "platform/word/model/InlineShapes.h"
#include "support/recording/CallLog.h"

namespace qvnd::test {

class RecordingFill : public word::FillFormat, Recorded {
public:
    using Recorded::Recorded;
    void setVisible(bool visible) override { set("Visible", visible); }
    void setTransparency(float part) override { set("Transparency", part); }
};

class RecordingLine : public word::LineFormat, Recorded {
public:
    using Recorded::Recorded;
    void setWeight(float points) override { set("Weight", points); }
    void setTransparency(float part) override { set("Transparency", part); }
    void setVisible(bool visible) override { set("Visible", visible); }
};

class RecordingPicture : public word::PictureFormat, Recorded {
public:
    using Recorded::Recorded;
    void setBrightness(float part) override { set("Brightness", part); }
    void setContrast(float part) override { set("Contrast", part); }
    void setCropLeft(float points) override { set("CropLeft", points); }
    void setCropRight(float points) override { set("CropRight", points); }
    void setCropTop(float points) override { set("CropTop", points); }
    void setCropBottom(float points) override { set("CropBottom", points); }
};

class RecordingShape : public word::InlineShape, Recorded {
public:
    RecordingShape(CallLog& log, const std::string& name)
        : Recorded(log, name), fill_(log, name + ".Fill"), line_(log, name + ".Line"),
          picture_(log, name + ".PictureFormat") {}
    word::FillFormat& Fill() override { return fill_; }
    word::LineFormat& Line() override { return line_; }
    word::PictureFormat& PictureFormat() override { return picture_; }
    void setLockAspectRatio(bool lock) override { set("LockAspectRatio", lock); }
    void setHeight(float points) override { set("Height", points); }
    void setWidth(float points) override { set("Width", points); }

private:
    RecordingFill fill_;
    RecordingLine line_;
    RecordingPicture picture_;
};

class RecordingShapes : public word::InlineShapes, Recorded {
public:
    RecordingShapes(CallLog& log, const std::string& name)
        : Recorded(log, name), shape_(log, name + "(1)") {}
    word::InlineShape& AddPicture(const std::filesystem::path& path, bool linkToFile,
                                  bool saveWithDocument) override {
        called("AddPicture " + log_.text(path) + ", " + log_.text(linkToFile) + ", " +
               log_.text(saveWithDocument));
        return shape_;
    }
    word::InlineShape& Item(int index) override {
        if (index != 1)
            throw RunTimeError(error::memberNotFound, u"集合所要求的成员不存在");
        return shape_;
    }

private:
    RecordingShape shape_;
};

} // namespace qvnd::test
