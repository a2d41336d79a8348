#pragma once

#include "generate/DocumentProbe.h"
#include "generate/GenerationWorld.h"
#include "platform/pictures/PictureDecoder.h"
#include "platform/word/engine/EngineApplication.h"

#include <functional>
#include <vector>

namespace qvnd::test {

// What a reader of the document is asked.
using Ask = std::function<QString(const DocumentProbe&)>;

// One field of one table, what a reader sees before it is changed, and what after.
struct Change {
    QString field;
    jet::Value value;
    Ask ask;
    QString before;
    QString after;
};

// A plan of three levels, the last a document under a document; the settings of a first
// installation; our own engine, and another reader.
class SettingsProof : public GenerationWorld {
protected:
    SettingsProof();

    // The document of a later run of a window: the first leaves its first folder's paragraph open.
    DocumentProbe generated();
    // Changes the field in the table's first row, and takes the change back.
    void prove(const QString& table, const std::vector<Change>& changes);
    // Puts a file into the folder of pictures.
    void keepPicture(const QString& name, word::ByteView bytes);

private:
    class FixedPages : public word::PageNumberSource {
    public:
        std::vector<std::u16string> displayedPages(const word::DocumentContent& /*content*/,
                                                   std::span<const word::Cp> positions) override {
            return std::vector<std::u16string>(positions.size(), u"7");
        }
    };
    class NoReport : public word::ImportReport {
    public:
        void notCarried(const std::filesystem::path& /*path*/, std::u16string_view what) override {
            ADD_FAILURE() << std::string(what.begin(), what.end());
        }
    };
    class NoQuestion : public word::UnsavedChangesQuestion {
    public:
        bool save(const std::filesystem::path& /*document*/) override { return false; }
    };

    void documentWith(const QString& key, const QString& text, std::u16string_view words);

    FixedPages pages_;
    NoReport report_;
    NoQuestion question_;
    pictures::PictureDecoder pictures_;

protected:
    word::EngineServices engine{pages_, report_, question_, &pictures_};
};

} // namespace qvnd::test
