#include "platform/picture.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

// The way from the binary's directory to the data directory; CMake passes
// the one that matches its install layout.
#ifndef VARNOCK_DATA_FROM_BIN
#define VARNOCK_DATA_FROM_BIN "../share/varnock"
#endif

namespace varnock {

QString ResourceDir() {
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + QLatin1Char('/') +
                           QStringLiteral(VARNOCK_DATA_FROM_BIN));
}

QString ResourcePath(const QString &fileName) {
    const QString path = ResourceDir() + QLatin1Char('/') + fileName;
    return QFileInfo(path).isFile() ? path : QString();
}

QPixmap LoadPicture(const QString &fileName) {
    const QString path = ResourcePath(fileName);
    if (path.isEmpty()) {
        return QPixmap();
    }
    return QPixmap(path);
}

} // namespace varnock
