#include "storage/outcome.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStorageInfo>
#include <QtGlobal>

#include <algorithm>
#include <array>
#include <cerrno>

namespace tarvel4 {

namespace {

/** What is said of a cause: its fixed name, and a source text of the context "Outcome" in which %1
 * is the detail. */
struct Words
{
    Outcome::Code code;
    const char *name;
    const char *sentence;
};

using Code = Outcome::Code;

constexpr std::array<Words, 23> allWords{{
    {Code::NotFound, "not-found",
     QT_TRANSLATE_NOOP("Outcome",
                       "il file non c'è: controllare il percorso, o inserire la "
                       "memoria su cui si trova")},
    {Code::NotAFile, "not-a-file",
     QT_TRANSLATE_NOOP("Outcome", "non è un file, ma una cartella, una pipe o un dispositivo")},
    {Code::ReadDenied, "read-denied",
     QT_TRANSLATE_NOOP("Outcome", "manca il permesso di leggerlo")},
    {Code::NotASong, "not-a-song",
     QT_TRANSLATE_NOOP("Outcome", "non è una song .mid, .kar, .mp3, .mf3, .mf4 o .mf5")},
    {Code::DamagedSong, "damaged-song", QT_TRANSLATE_NOOP("Outcome", "la song è danneggiata: %1")},
    {Code::DamagedIndex, "damaged-index",
     QT_TRANSLATE_NOOP("Outcome", "l'indice è danneggiato (%1): va ricostruito")},
    {Code::OtherFormat, "other-format",
     QT_TRANSLATE_NOOP("Outcome", "non è una song .mf3, .mf4 o .mf5")},
    {Code::TextTooLong, "text-too-long",
     QT_TRANSLATE_NOOP("Outcome", "il testo è troppo lungo: %1")},
    {Code::LetterNotStorable, "letter-not-storable",
     QT_TRANSLATE_NOOP("Outcome", "questo formato non può contenere la lettera \"%1\"")},
    {Code::TooLarge, "too-large", QT_TRANSLATE_NOOP("Outcome", "è troppo grande: %1")},
    {Code::NoMarkers, "no-markers",
     QT_TRANSLATE_NOOP("Outcome", "questo formato non può contenere marker")},
    {Code::ChangedMeanwhile, "changed-meanwhile",
     QT_TRANSLATE_NOOP("Outcome", "un altro programma l'ha cambiato nel frattempo: va riletto")},
    {Code::WriteDenied, "write-denied",
     QT_TRANSLATE_NOOP("Outcome", "manca il permesso di scriverlo")},
    {Code::ReadOnlyVolume, "read-only-volume",
     QT_TRANSLATE_NOOP("Outcome",
                       "il disco o la memoria è protetta da scrittura (%1): se prima si poteva "
                       "scrivere, va riparata")},
    {Code::NoRoom, "no-room",
     QT_TRANSLATE_NOOP("Outcome",
                       "non c'è abbastanza spazio libero sul disco o sulla memoria: %1")},
    {Code::MediumFailed, "medium-failed",
     QT_TRANSLATE_NOOP("Outcome", "il disco o la memoria ha dato un errore (%1)")},
    {Code::NameTooLong, "name-too-long",
     QT_TRANSLATE_NOOP("Outcome", "il nome o il percorso è troppo lungo")},
    {Code::AlreadyExists, "already-exists", QT_TRANSLATE_NOOP("Outcome", "esiste già")},
    {Code::InUse, "in-use", QT_TRANSLATE_NOOP("Outcome", "è usato da un altro programma")},
    {Code::LinkOutOfMemory, "link-out-of-memory",
     QT_TRANSLATE_NOOP("Outcome", "al suo posto c'è un collegamento, che non viene seguito")},
    {Code::Refused, "refused-target",
     QT_TRANSLATE_NOOP("Outcome", "non viene sovrascritto, perché è %1")},
    {Code::NotConfirmed, "not-confirmed",
     QT_TRANSLATE_NOOP("Outcome",
                       "salvato, ma il disco o la memoria non l'ha confermato: va "
                       "controllato prima di toglierla")},
    {Code::NotRestored, "not-restored",
     QT_TRANSLATE_NOOP("Outcome",
                       "non salvato, e il contenuto di prima non è tornato al suo "
                       "posto: %1")},
}};

const Words *wordsOf(Code code)
{
    const auto words = std::find_if(allWords.begin(), allWords.end(),
                                    [code](const Words &row) { return row.code == code; });
    return words == allWords.end() ? nullptr : &*words;
}

Code codeOf(int error, bool isWriting)
{
    switch (error) {
    case ENOENT:
    case ENOTDIR:
        return Code::NotFound;
    case EISDIR:
        return Code::NotAFile;
    case EACCES:
    case EPERM:
        return isWriting ? Code::WriteDenied : Code::ReadDenied;
    case EROFS:
        return Code::ReadOnlyVolume;
    case ENOSPC:
#ifdef EDQUOT
    case EDQUOT:
#endif
        return Code::NoRoom;
    case EFBIG:
        return Code::TooLarge;
    case ENAMETOOLONG:
        return Code::NameTooLong;
    case EEXIST:
        return Code::AlreadyExists;
    case EBUSY:
    case ETXTBSY:
        return Code::InUse;
    case ELOOP:
        return Code::LinkOutOfMemory;
    default:
        return Code::MediumFailed;
    }
}

} // namespace

QString Outcome::sentence() const
{
    const Words *words = wordsOf(code);
    if (!words)
        return {};
    if (code == Code::ChangedMeanwhile && !detail.isEmpty())
        return detail;
    QString text = QCoreApplication::translate("Outcome", words->sentence);
    if (detail.isEmpty())
        return text.remove(QLatin1String(" (%1)")).remove(QLatin1String(": %1"));
    return text.contains(QLatin1String("%1")) ? text.arg(detail) : text;
}

QString Outcome::message() const
{
    return path.isEmpty() ? sentence() : path + QLatin1String(": ") + sentence();
}

QString Outcome::systemWords() const
{
    return systemError == 0 ? QString() : qt_error_string(systemError);
}

QString Outcome::codeName() const
{
    const Words *words = wordsOf(code);
    return words ? QString::fromLatin1(words->name) : QString();
}

QString Outcome::volumeNameOf(const QString &path)
{
    if (path.isEmpty())
        return {};
    QStorageInfo volume(path);
    if (!volume.isValid()) // a file that is to be made
        volume.setPath(QFileInfo(path).absolutePath());
    return volume.isValid() ? volume.displayName() : QString();
}

Outcome Outcome::ofSystemError(int error, const QString &path, bool isWriting)
{
    const Code code = codeOf(error, isWriting);
    Outcome outcome{code, path, {}, {}, error};
    if (code == Code::MediumFailed)
        outcome.detail = outcome.systemWords();
    else if (code == Code::ReadOnlyVolume)
        outcome.detail = volumeNameOf(path);
    else if (code == Code::TooLarge)
        outcome.detail =
            QCoreApplication::translate("Outcome", "più di quanto il disco o la memoria accetta");
    return outcome;
}

} // namespace tarvel4
