#pragma once

#include <QApplication>
#include <QDialog>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>

namespace qvnd::test {

// Runs `act` on the modal window once it stands; it must close it.
template <typename Window>
void onceModal(const std::function<void(Window&)>& act) {
    QTimer::singleShot(0, qApp, [act] {
        auto* window = qobject_cast<Window*>(QApplication::activeModalWidget());
        ASSERT_NE(window, nullptr);
        act(*window);
        if (window->isVisible()) {
            ADD_FAILURE() << "still open: " << window->windowTitle().toStdString();
            window->close();
        }
    });
}

} // namespace qvnd::test
