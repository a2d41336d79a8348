#pragma once

#include <QObject>

#include <memory>
#include <mutex>

namespace qvnd::preview {

// Runs functions that other threads post in the thread that made the object. Functions that have
// not run when the object is destroyed, and those posted later, are dropped.
class Mailbox {
public:
    Mailbox() : slot_(std::make_shared<Slot>()) {}
    ~Mailbox() {
        const std::scoped_lock guard(slot_->lock);
        slot_->receiver.reset();
    }
    Mailbox(const Mailbox&) = delete;
    Mailbox& operator=(const Mailbox&) = delete;

    // Used by the other threads.
    class Sender {
    public:
        template <typename Call>
        void post(Call call) const {
            const std::scoped_lock guard(slot_->lock);
            if (slot_->receiver) {
                QMetaObject::invokeMethod(slot_->receiver.get(), std::move(call),
                                          Qt::QueuedConnection);
            }
        }
        bool isOpen() const {
            const std::scoped_lock guard(slot_->lock);
            return slot_->receiver != nullptr;
        }

    private:
        friend class Mailbox;
        struct Slot {
            std::mutex lock;
            std::unique_ptr<QObject> receiver = std::make_unique<QObject>();
        };
        explicit Sender(std::shared_ptr<Slot> slot) : slot_(std::move(slot)) {}

        std::shared_ptr<Slot> slot_;
    };

    Sender sender() const { return Sender(slot_); }

private:
    using Slot = Sender::Slot;
    std::shared_ptr<Slot> slot_;
};

} // namespace qvnd::preview
