#pragma once

#include "cli/exitstatus.h"

#include <QByteArrayList>
#include <QHash>
#include <QStringList>
#include <QVector>

namespace tarvel4 {

/** A long option; the tables of these give both the parsing and the help. */
struct Option
{
    enum Kind {
        Flag,
        Text, ///< a text of the user's
        Path, ///< the name of a file or folder
        Choice ///< one of the words of \a value, separated by "|"
    };

    const char *name;
    Kind kind;
    const char *value; ///< as help shows it; null for a flag
    const char *help; ///< source text of the context "Cli"
    bool yields = false; ///< a shortened name that fits another option as well means that one
};

/** The words after a command, told apart into options and operands. */
class Arguments
{
public:
    /** What is wrong with a command line; no text when nothing is. */
    struct Error
    {
        ExitStatus status = ExitStatus::Usage;
        QString text;
    };

    enum Extent { UpToFirstOperand, All };

    /** Takes words off the front of \a words and adds what they say; false: see error(). */
    bool read(QByteArrayList &words, const QVector<Option> &options, Extent extent);

    /** Adds the operands that stand in the files of the option "files-from", each on a line, or
     * with the option "null" ended by a zero byte; false: see error(). */
    bool readLists();

    const Error &error() const { return m_error; }

    bool has(const char *option) const { return m_values.contains(option); }
    /** The value given last, else \a fallback. */
    QString value(const char *option, const QString &fallback = QString()) const;
    QStringList values(const char *option) const { return m_values.value(option); }
    /** The words that are no options: paths as given, on Windows with slashes and without
     * wildcards. */
    const QStringList &operands() const { return m_operands; }

    /** A path as Qt must be told it, which takes one that begins with a colon for its own. */
    static QString onDisk(const QString &path);

private:
    bool readOption(QByteArrayList &words, const QVector<Option> &options);
    bool addValue(const Option &option, const QByteArray &bytes);
    bool addWord(const QByteArray &bytes);
    bool addOperand(const QByteArray &bytes);
    bool readList(const QString &path, QByteArray &bytes);
    bool failToReach(const QByteArray &path);
    bool fail(ExitStatus status, const QString &text);

    QHash<QByteArray, QStringList> m_values;
    QStringList m_operands;
    Error m_error;
};

} // namespace tarvel4
