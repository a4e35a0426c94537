#pragma once
// Work that would hold the window's thread (a search of a whole screenshot, a capture)
// done on a thread of its own. Only the newest request's answer is handed back, on the
// window's thread, and only while its receiver is open: closing never waits for the work.

#include <QCoreApplication>
#include <QPointer>
#include <QThreadPool>
#include <functional>
#include <memory>

namespace autoscene::ui {

template <typename Answer>
class LatestAnswer {
public:
    // A member of `receiver`, so that it lives as long.
    explicit LatestAnswer(QObject* receiver) : receiver_(receiver) {}

    // Runs `work` on a new thread; `done` gets its answer on the window's thread unless a
    // newer request or the receiver's end came first. `work` must own what it reads.
    void ask(std::function<Answer()> work, std::function<void(Answer)> done) {
        const int asked = ++*newest_;
        QPointer<QObject> receiver(receiver_);
        // On the application's pool, which the application waits for when it ends; the
        // answer of a closed receiver is dropped, unwaited.
        QThreadPool::globalInstance()->start(
            [=, this, newest = newest_, work = std::move(work), done = std::move(done)]() mutable {
                Answer answer = work();
                QCoreApplication* application = QCoreApplication::instance();
                if (!application) {
                    return;
                }
                QMetaObject::invokeMethod(
                    application,
                    [=, this, answer = std::move(answer)]() mutable {
                        if (receiver && *newest == asked) {
                            answered_ = asked;
                            done(std::move(answer));
                        }
                    },
                    Qt::QueuedConnection);
            });
    }

    // Drops the answers of every request so far.
    void drop() { answered_ = ++*newest_; }

    // The newest request is still being worked on.
    bool busy() const { return *newest_ != answered_; }

private:
    QObject* receiver_;
    // Read and written on the window's thread only.
    std::shared_ptr<int> newest_ = std::make_shared<int>(0);
    int answered_ = 0;
};

}  // namespace autoscene::ui
