#include "app/commandline.h"

#include "library/programversion.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace tarvel4 {

namespace {

QByteArray encoded(const QString &path)
{
#ifdef Q_OS_WIN
    return path.toUtf8();
#else
    return QFile::encodeName(path);
#endif
}

} // namespace

CommandLine::CommandLine(int argc, char *const argv[])
{
    bool onlyPaths = false;
    for (int i = 1; i < argc; ++i) {
        const QByteArray word(argv[i]);
        if (onlyPaths || word.size() < 2 || !word.startsWith('-'))
            addPath(word);
        else if (word == "--")
            onlyPaths = true;
        else if (word == "--help" || word == "-h")
            m_asksForHelp = true;
        else if (word == "--version")
            m_asksForVersion = true;
        else if (m_unknownOption.isEmpty())
            m_unknownOption = word;
    }
}

void CommandLine::addPath(const QByteArray &word)
{
    const QString path = decoded(word);
    if (path.isEmpty())
        return;
    if (encoded(path) != word)
        m_unreachable += path;
    else if (path.startsWith(QLatin1Char(':'))) // which Qt takes for a resource of the program
        m_paths += QDir::currentPath() + QLatin1Char('/') + path;
    else
        m_paths += QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

QString CommandLine::decoded(const QByteArray &word)
{
#ifdef Q_OS_WIN
    return QString::fromUtf8(word);
#else
    return QFile::decodeName(word);
#endif
}

QString CommandLine::help()
{
    return QCoreApplication::translate(
        "CommandLine",
        "Uso: tarvel4soft [OPZIONE]... [FILE]...\n"
        "Apre la finestra di Tarvel4 Soft e importa i file e le cartelle indicati.\n"
        "\n"
        "  -h, --help   mostra questo aiuto\n"
        "  --version    mostra la versione\n"
        "  --           da qui in poi ci sono solo file\n"
        "\n"
        "Per lavorare dal terminale, senza finestra: tarvel4soft-cli --help\n");
}

QString CommandLine::version()
{
    return QStringLiteral("tarvel4soft %1\n").arg(QLatin1String(programVersion()));
}

} // namespace tarvel4
