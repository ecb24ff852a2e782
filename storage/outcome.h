#pragma once

#include <QString>

namespace tarvel4 {

/**
 * What happened to one file, and why: named by the one that met the failure and carried up to the
 * person unchanged. In a condition it is true when all went well.
 */
struct Outcome
{
    /** The closed set of causes; docs/commands.md, Causes. codeName() gives their fixed names. */
    enum class Code {
        Done,
        // reading
        NotFound,
        NotAFile, ///< a folder, a pipe, a device
        ReadDenied,
        NotASong,
        DamagedSong, ///< detail: what is damaged
        DamagedIndex, ///< detail: which file of it
        OtherFormat, ///< a song, but none of the kind that is wanted
        // what is to be written does not fit
        TextTooLong, ///< field; detail: how long it is and how long it may be
        LetterNotStorable, ///< field; detail: the letter
        TooLarge, ///< detail: what, and how much may be
        NoMarkers, ///< the format keeps none
        // writing
        ChangedMeanwhile, ///< detail: a sentence in place of "read it again", where nobody would
        WriteDenied,
        ReadOnlyVolume, ///< detail: the volume's name
        NoRoom, ///< detail: how much is missing, where that is known
        MediumFailed, ///< detail: the system's own words
        NameTooLong,
        AlreadyExists,
        InUse,
        LinkOutOfMemory, ///< a link stands where a file of a memory belongs
        Refused, ///< a file that must not be overwritten; detail: what it is
        // written, and yet
        NotConfirmed, ///< saved, but the medium did not confirm it, or it can't be read back
        NotRestored, ///< the old bytes are not back; detail: where they are kept
    };

    Code code = Code::Done;
    QString path; ///< of the file that it happened to
    QString detail; ///< translated plain text, as the code has it
    QString field; ///< the key in a song's record of the field to blame: "title" ...
    int systemError = 0; ///< the number by which the system named the cause; 0 where it did not

    explicit operator bool() const { return code == Code::Done; }

    /** The cause and what to do, translated, without the path; empty when all went well. */
    QString sentence() const;
    /** The path and the sentence. */
    QString message() const;
    /** The system's own words for the cause; empty where it named none. */
    QString systemWords() const;
    /** The code's fixed name, as "no-room"; empty when all went well. */
    QString codeName() const;

    /** The cause that an error number of the system stands for; \a isWriting tells the two kinds
     * of missing permission apart. */
    static Outcome ofSystemError(int error, const QString &path, bool isWriting = true);

    /** What people call the volume that holds \a path: its label, or where it is mounted. */
    static QString volumeNameOf(const QString &path);
};

inline bool operator==(const Outcome &outcome, Outcome::Code code)
{
    return outcome.code == code;
}

inline bool operator!=(const Outcome &outcome, Outcome::Code code)
{
    return outcome.code != code;
}

} // namespace tarvel4
