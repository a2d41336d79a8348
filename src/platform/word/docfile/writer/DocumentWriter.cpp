#include "platform/word/docfile/writer/DocumentWriter.h"

#include "platform/word/docfile/writer/DocumentSession.h"

#include <stdexcept>
#include <utility>

namespace qvnd::word {

struct DocumentWriter::State {
    std::shared_ptr<OutputFolder> folder;
    std::filesystem::path path;               // of the last saveAs()
    std::unique_ptr<DocumentSession> session; // none after a failure
    std::optional<FileStamp> stamp;           // the file as we left it

    bool isUntouched() const { return session && stamp && folder->stamp(path) == stamp; }
    void writeWhole(const std::filesystem::path& target, const DocumentContent& content,
                    std::vector<Bookmark> marks = {});
    void appendNew(const DocumentContent& content);
};

void DocumentWriter::State::writeWhole(const std::filesystem::path& target,
                                       const DocumentContent& content,
                                       std::vector<Bookmark> marks) {
    std::filesystem::path temporary;
    auto file = folder->createBeside(target, &temporary);
    std::unique_ptr<DocumentSession> written;
    try {
        written = std::make_unique<DocumentSession>(std::move(file));
        written->setMarks(std::move(marks));
        written->write(content);
        written->store().commit(CompoundStore::Durability::lostPower);
        written->store().detach();
        folder->replace(temporary, target);
    } catch (...) {
        written.reset(); // closes the file, which not every system removes while it is open
        folder->remove(temporary);
        throw;
    }
    path = target;
    session = std::move(written);
    stamp = folder->stamp(path);
}

void DocumentWriter::State::appendNew(const DocumentContent& content) {
    auto file = folder->openForUpdate(path);
    std::unique_ptr<DocumentSession> used = std::move(session);
    used->store().attach(std::move(file));
    try {
        used->write(content);
        used->store().commit(CompoundStore::Durability::killedProcess);
        used->store().detach();
    } catch (...) {
        used->store().abandon();
        throw;
    }
    session = std::move(used);
    stamp = folder->stamp(path);
}

DocumentWriter::DocumentWriter() : DocumentWriter(realOutputFolder()) {}

DocumentWriter::DocumentWriter(std::shared_ptr<OutputFolder> folder)
    : state_(std::make_unique<State>()) {
    state_->folder = std::move(folder);
}

DocumentWriter::~DocumentWriter() = default;
DocumentWriter::DocumentWriter(DocumentWriter&&) noexcept = default;
DocumentWriter& DocumentWriter::operator=(DocumentWriter&&) noexcept = default;

void DocumentWriter::saveAs(const std::filesystem::path& path, const DocumentContent& content) {
    state_->writeWhole(path, content);
}

void DocumentWriter::save(const DocumentContent& content) {
    if (state_->path.empty()) {
        throw std::logic_error("a document without a file is saved");
    }
    if (state_->isUntouched()) {
        state_->appendNew(content);
    } else {
        state_->writeWhole(state_->path, content);
    }
}

std::size_t DocumentWriter::rangesWithoutRoom() const {
    return state_->session ? state_->session->rangesWithoutRoom() : 0;
}

std::size_t DocumentWriter::cutLists() const {
    return state_->session ? state_->session->cutLists() : 0;
}

void writeMarkedCopy(const std::filesystem::path& path, const DocumentContent& content,
                     std::vector<Bookmark> marks) {
    DocumentWriter().state_->writeWhole(path, content, std::move(marks));
}

} // namespace qvnd::word
