#pragma once

#include <QByteArray>
#include <QStringList>

namespace tarvel4 {

/** What the command line asks of the program, in the bytes that it was given: Qt's own list of them
 * has lost what is not valid in the locale. */
class CommandLine
{
public:
    /** The words behind the program's name. */
    CommandLine(int argc, char *const argv[]);

    bool asksForHelp() const { return m_asksForHelp; }
    bool asksForVersion() const { return m_asksForVersion; }
    /** The first word that is no option of the program; to be asked when Qt has taken its own. */
    const QByteArray &unknownOption() const { return m_unknownOption; }
    /** The files and folders to import, each as an absolute path. */
    const QStringList &paths() const { return m_paths; }
    /** Those whose names are not valid in the locale, so that Qt can't open them. */
    const QStringList &unreachable() const { return m_unreachable; }

    /** A word as text: its bytes are in the locale's encoding, or in UTF-8 on Windows (main()). */
    static QString decoded(const QByteArray &word);

    /** What --help and --version print. */
    static QString help();
    static QString version();

private:
    void addPath(const QByteArray &word);

    QStringList m_paths;
    QStringList m_unreachable;
    QByteArray m_unknownOption;
    bool m_asksForHelp = false;
    bool m_asksForVersion = false;
};

} // namespace tarvel4
