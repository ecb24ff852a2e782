#pragma once

#include <QFile>

#include <filesystem>

namespace tarvel4 {

/** A path as the standard library takes it, byte for byte what Qt hands to the system. */
inline std::filesystem::path nativePath(const QString &path)
{
#ifdef Q_OS_WIN
    return path.toStdWString();
#else
    return QFile::encodeName(path).toStdString();
#endif
}

} // namespace tarvel4
