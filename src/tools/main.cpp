#include "tools/Run.h"

#include <QCoreApplication>

#include <iostream>

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("qvndctl"));
    return static_cast<int>(qvnd::tools::run(QCoreApplication::arguments().mid(1), std::cout,
                                             std::cerr, QCoreApplication::applicationDirPath()));
}
