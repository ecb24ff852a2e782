#pragma once

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace tarvel4 {

/** Small files for the tests of the workflows. */
namespace TestFiles {

/** Writes a file and the folders above it. */
inline QString write(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("can't write %s", qPrintable(path));
    return path;
}

/** The bytes of a file; "(none)" where it can't be read. */
inline QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
}

/** Everything in a folder, names that begin with a dot included, in name order. */
inline QStringList namesIn(const QString &folder)
{
    return QDir(folder).entryList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

inline void setModified(const QString &path, const QDateTime &time)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite)
        || !file.setFileTime(time, QFileDevice::FileModificationTime))
        qFatal("can't set the time of %s", qPrintable(path));
}

} // namespace TestFiles

} // namespace tarvel4
