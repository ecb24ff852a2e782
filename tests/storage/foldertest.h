#pragma once

#include "tests/library/logcapture.h"
#include "tests/songs/songbytes.h"
#include "tests/storage/failingdisk.h"
#include "tests/storage/table.h"
#include "tests/storage/unixfile.h"

#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace tarvel4 {

/** A test whose files are in a folder, a new one for each row. */
class FolderTest : public QObject
{
protected:
    void makeFolder() { m_folder = std::make_unique<QTemporaryDir>(); }
    QString path() const { return m_folder->path(); }
    QString path(const QString &name) const { return m_folder->filePath(name); }
    QString path(const char *name) const { return path(QString::fromLatin1(name)); }
    QStringList names() const { return SongBytes::names(path()); }

private:
    std::unique_ptr<QTemporaryDir> m_folder = std::make_unique<QTemporaryDir>();
};

} // namespace tarvel4

Q_DECLARE_METATYPE(tarvel4::Outcome::Code)
