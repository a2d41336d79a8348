#pragma once

#include "platform/desktop/SplashScreen.h"

#include <QWidget>

#include <memory>

class QLabel;

namespace qvnd::startup {

// The picture that covers the start, above all other windows, as large as its image.
class frmSplash : public QWidget {
    Q_OBJECT

public:
    frmSplash();

    // The line below the name; see SplashScreen.
    void tell(const QString& text);

private:
    QLabel* waiting_;
};

// The splash as the program's routines see it.
class WidgetSplash : public desktop::SplashScreen {
public:
    void show() override;
    void tell(const QString& text) override;
    void unload() override;

    bool isLoaded() const { return form_ != nullptr; }

private:
    std::unique_ptr<frmSplash> form_;
};

} // namespace qvnd::startup
