#pragma once

#include "platform/preview/PdfCache.h"

#include <QObject>
#include <QString>

#include <chrono>
#include <deque>
#include <functional>
#include <memory>

namespace qvnd::preview {

class ConversionRun;

struct ConversionSettings {
    QString program;       // of the office suite; empty when none is installed
    QString profileFolder; // of the suite, for this purpose alone
    QString cacheFolder;   // for PDFs, and for files on their way
    PdfCache::Limits cache;
    // How long a document must stay wanted before the suite is started for it, so that a user who
    // walks through the outline starts none.
    std::chrono::milliseconds settling{150};
    // How long the suite may take.
    std::chrono::milliseconds patience{60'000};
    std::chrono::milliseconds patiencePerMegabyte{20'000};

    // The values for this desktop.
    static ConversionSettings ofDesktop();
};

// Turns documents into PDF through the office suite: in a process of its own, one document at a
// time, without blocking the caller. The PDF of a document is kept and found again by the
// document's content. Answers come in the thread of the object, never from within a call.
class PageConversion : public QObject {
public:
    struct Outcome {
        QString pdf;     // its path; empty when there is none
        QString failure; // then the reason, in Chinese
    };
    using Answer = std::function<void(const Outcome&)>;

    // A request for one document. When it or the conversion is destroyed, its work is ended and no
    // answer comes.
    class Wish {
    public:
        ~Wish();
        Wish(const Wish&) = delete;
        Wish& operator=(const Wish&) = delete;

    private:
        friend class PageConversion;
        Wish(PageConversion& conversion, int number);

        std::weak_ptr<PageConversion*> conversion_;
        int number_;
    };

    explicit PageConversion(ConversionSettings settings);
    ~PageConversion() override;

    bool isAvailable() const { return !settings_.program.isEmpty(); }
    // To be called only when it is available.
    std::unique_ptr<Wish> convert(const QString& document, Answer answer);

private:
    struct Request {
        int number = 0;
        QString document;
        Answer answer;
    };

    void startNext();
    void finished(const Outcome& outcome);
    void cancel(int number);

    ConversionSettings settings_;
    PdfCache cache_;
    std::deque<Request> requests_; // the first one is being converted
    std::unique_ptr<ConversionRun> run_;
    int lastNumber_ = 0;
    std::shared_ptr<PageConversion*> self_; // tells wishes whether the object is still there
};

} // namespace qvnd::preview
