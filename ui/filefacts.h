#pragma once

#include <QCoreApplication>

namespace tarvel4 {

/** What tells two files of one name apart: their sizes and dates. */
class FileFacts
{
    Q_DECLARE_TR_FUNCTIONS(FileFacts)

public:
    /** The size and the date of \a path; says where it is newer than \a other by more than the two
     * seconds that FAT counts in. */
    static QString sentence(const QString &path, const QString &other);
};

} // namespace tarvel4
