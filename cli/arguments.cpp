#include "cli/arguments.h"

#include "cli/console.h"
#include "cli/texts.h"
#include "cli/wildcards.h"
#include "storage/systemerror.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <optional>

namespace tarvel4 {

namespace {

/** An argument's text; none where bytes would be lost, so that no other file is ever named. */
std::optional<QString> textOf(const QByteArray &bytes)
{
    const QString text = QString::fromUtf8(bytes);
    return text.toUtf8() == bytes ? std::make_optional(text) : std::nullopt;
}

bool isOption(const QByteArray &word)
{
    return word.startsWith('-') && word.size() > 1;
}

/** The whole name of an option. */
QByteArray fullName(const QByteArray &name)
{
    if (name == "-h")
        return "--help";
    return name == "-v" ? QByteArray("--verbose") : name;
}

/** The option of that name, else those whose names begin so. */
QVector<const Option *> optionsNamed(const QByteArray &name, const QVector<Option> &options)
{
    QVector<const Option *> matches;
    for (const Option &option : options) {
        const QByteArray full = QByteArray("--") + option.name;
        if (full == name)
            return {&option};
        if (name.startsWith("--") && full.startsWith(name))
            matches += &option;
    }
    if (matches.size() > 1)
        matches.erase(std::remove_if(matches.begin(), matches.end(),
                                     [](const Option *option) { return option->yields; }),
                      matches.end());
    return matches;
}

} // namespace

bool Arguments::read(QByteArrayList &words, const QVector<Option> &options, Extent extent)
{
    bool onlyOperands = false;
    while (!words.isEmpty()) {
        if (!onlyOperands && words.first() == "--") {
            words.removeFirst();
            onlyOperands = true;
        } else if (!onlyOperands && isOption(words.first())) {
            if (!readOption(words, options))
                return false;
        } else if (extent == UpToFirstOperand) {
            return true;
        } else if (!addWord(words.takeFirst())) {
            return false;
        }
    }
    return true;
}

QString Arguments::value(const char *option, const QString &fallback) const
{
    const QStringList given = values(option);
    return given.isEmpty() ? fallback : given.last();
}

QString Arguments::onDisk(const QString &path)
{
    const QString slashed = QDir::fromNativeSeparators(path);
    return path.startsWith(QLatin1Char(':')) ? QLatin1String("./") + slashed : slashed;
}

bool Arguments::readOption(QByteArrayList &words, const QVector<Option> &options)
{
    const QByteArray word = words.takeFirst();
    const int equals = static_cast<int>(word.indexOf('='));
    const QByteArray name = fullName(word.left(equals < 0 ? word.size() : equals));
    const QVector<const Option *> matches = optionsNamed(name, options);
    if (matches.size() != 1)
        return fail(ExitStatus::Usage,
                    (matches.isEmpty() ? Cli::tr("opzione sconosciuta: %1")
                                       : Cli::tr("opzione ambigua: %1"))
                        .arg(QString::fromUtf8(word)));
    const Option *option = matches.first();
    if (option->kind == Option::Flag) {
        if (equals >= 0)
            return fail(
                ExitStatus::Usage,
                Cli::tr("l'opzione --%1 non prende valori").arg(QLatin1String(option->name)));
        m_values[option->name] += QString();
        return true;
    }
    const bool hasValue = equals >= 0 || !words.isEmpty();
    const QByteArray value = equals < 0 && hasValue ? words.takeFirst() : word.mid(equals + 1);
    // Qt takes an empty path for the working folder, or for none.
    if (!hasValue || (option->kind == Option::Path && value.isEmpty()))
        return fail(ExitStatus::Usage,
                    Cli::tr("manca il valore dell'opzione --%1").arg(QLatin1String(option->name)));
    return addValue(*option, value);
}

bool Arguments::addValue(const Option &option, const QByteArray &bytes)
{
    const std::optional<QString> text = textOf(bytes);
    if (!text && option.kind == Option::Path)
        return failToReach(bytes);
    if (!text)
        return fail(ExitStatus::Usage,
                    Cli::tr("il valore dell'opzione --%1 non è UTF-8 valido")
                        .arg(QLatin1String(option.name)));
    const QStringList choices = QString::fromLatin1(option.value).split(QLatin1Char('|'));
    if (option.kind == Option::Choice && !choices.contains(*text))
        return fail(ExitStatus::Usage,
                    Cli::tr("il valore dell'opzione --%1 è uno di: %2")
                        .arg(QLatin1String(option.name), choices.join(QLatin1String(", "))));
    m_values[option.name] += option.kind == Option::Path ? onDisk(*text) : *text;
    return true;
}

/** A shell that leaves wildcards to the program has left them in a word of the command line. */
bool Arguments::addWord(const QByteArray &bytes)
{
#ifdef Q_OS_WIN
    const std::optional<QString> text = textOf(bytes);
    if (text && Wildcards::areIn(*text)) {
        m_operands += Wildcards::expanded(QDir::fromNativeSeparators(*text));
        return true;
    }
#endif
    return addOperand(bytes);
}

bool Arguments::addOperand(const QByteArray &bytes)
{
    const std::optional<QString> text = textOf(bytes);
    if (!text)
        return failToReach(bytes);
    m_operands += QDir::fromNativeSeparators(*text);
    return true;
}

bool Arguments::readLists()
{
    const char end = has("null") ? '\0' : '\n';
    for (const QString &list : values("files-from")) {
        QByteArray bytes;
        if (!readList(list, bytes))
            return false;
        if (bytes.startsWith("\xEF\xBB\xBF")) // which Windows programs put ahead of UTF-8
            bytes.remove(0, 3);
        QByteArrayList paths = bytes.split(end);
        for (QByteArray &path : paths) {
#ifdef Q_OS_WIN
            if (path.endsWith('\r')) // no name has it
                path.chop(1);
#endif
            if (!path.isEmpty() && !addOperand(path))
                return false;
        }
    }
    return true;
}

/** A pipe is good as well. */
bool Arguments::readList(const QString &path, QByteArray &bytes)
{
    Outcome cause{Outcome::Code::NotAFile, path, {}, {}};
    bool isRead = false;
    SystemError::presumeFailedMedium();
    if (path == QLatin1String("-")) {
        isRead = Console::readAll(bytes);
        cause = SystemError::outcomeOf(isRead, path, false);
    } else if (!QFileInfo(path).isDir()) {
        QFile file(path);
        if (file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
            bytes = file.readAll();
            isRead = file.error() == QFileDevice::NoError;
        }
        cause = SystemError::outcomeOf(isRead, path, false);
    }
    return isRead || fail(ExitStatus::Failed, path + QLatin1String(": ") + cause.sentence());
}

bool Arguments::failToReach(const QByteArray &path)
{
    return fail(ExitStatus::Failed,
                Cli::tr("%1: il nome non è UTF-8 valido e non può essere aperto")
                    .arg(QString::fromUtf8(path)));
}

bool Arguments::fail(ExitStatus status, const QString &text)
{
    m_error = {status, text};
    return false;
}

} // namespace tarvel4
