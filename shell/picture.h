#pragma once

// The application's pictures are separate files installed with it, found
// relative to the running binary: <prefix>/bin/varnock reads
// <prefix>/share/varnock/. The build tree keeps the same layout (the build
// copies the files to <build>/share/varnock/), so any binary one directory
// below the build directory, the program and the tests alike, finds them too.
// The source tree is never searched.

#include <QPixmap>
#include <QString>

namespace varnock {

// The directory the pictures are looked for in, without a trailing slash.
QString ResourceDir();

// `fileName` inside ResourceDir() if that file exists, else an empty string.
QString ResourcePath(const QString &fileName);

// Loads `fileName` from ResourceDir(). A missing or unreadable file gives a
// null pixmap and nothing else: no message, no exception.
QPixmap LoadPicture(const QString &fileName);

// The About picture, "VarnockFrets128b.bmp", 128 x 128. Loaded at the first
// call and kept for the life of the program; every call returns the same
// object. Null when the file is missing. Needs the QApplication to exist.
const QPixmap &VarnockFrets128b();

} // namespace varnock
