#pragma once

// The application's pictures are separate files installed with it, found
// relative to the running binary: the build passes the way from the binary's
// folder to the data folder (such as ../share/<program>). The build tree
// keeps the same layout, so any binary one directory below the build
// directory, the program and the tests alike, finds them too. The source
// tree is never searched.

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

} // namespace varnock
