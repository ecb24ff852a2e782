#pragma once

#include <QtTest>

#include <cstring>

namespace tarvel4 {

/** Why a row of tests/program can't be tried with the program for Windows; null where it can. */
inline const char *whyNotOnWindows(const char *function, const char *row)
{
    struct Row
    {
        const char *function;
        const char *part; ///< of the row's name
        const char *reason;
    };
    constexpr const char *trace = "strace sees no system calls of Windows";
    constexpr const char *limit = "a Windows program has no limit for the size of its files";
    constexpr const char *mount = "a volume that one process mounts is not there for wine";
    constexpr const char *link = "wine shows a link of Unix as what it leads to";
    constexpr const char *fifo = "Windows has no FIFO";
    constexpr const char *noName = "Windows has no such name";
    constexpr const char *bytes = "the words of Windows are no bytes";
    constexpr const char *signal = "Windows has no such signal";
    constexpr const char *terminal = "wine shows a console of its own on a terminal";
    static const Row rows[] = {
        {"printsJson", "a name with quotes", noName},
        {"refusesPaths", "a name that is not UTF-8", noName},
        {"saysWhatItCannotReachInAFolder", "", noName},
        {"eachCauseHasItsCode", "a FIFO", fifo},
        {"eachCauseHasItsCode", "a device", "Windows has no devices among its files"},
        {"eachCauseHasItsCode", "above the limit", limit},
        {"eachCauseHasItsCode", "a card that is", mount},
        {"saysWhatCouldNotBeEdited", "a song that can't grow", limit},
        {"writesNothingWithoutABackup", "a disk that fills up", limit},
        {"goesOnAfterASongThatCannotBeSaved", "", limit},
        {"stopsAtASignalBeforeTheNextSong", "", trace},
        {"refusesWrongUsage", "a text that is not UTF-8", bytes},
        {"saysThatOutputCannotBeWritten", "all streams closed", "wine opens closed streams"},
        {"takesPathsFromAFile", "each ended by a zero byte", noName},
        {"takesPathsFromAFile", "from a pipe with a name", fifo},
        {"canBeInterruptedWhileItWaitsForPaths", "", signal},
        {"namesEachSongThatFailed", "a song that must not be read", trace},
        {"namesEachSongThatFailed", "a song that has vanished meanwhile", trace},
        {"namesEachSongThatFailed", "a song on a dying disk", trace},
        {"saysWhyTheFolderCantBeMade", "", mount},
        {"saysHowMuchRoomIsMissing", "", mount},
        {"takesNoneOfSeveralSongsOfOneName", "", link},
        {"saysLastThatTheCardMayBePulled", "", trace},
        {"refuses", "a reserved folder, by way of a link", link},
        {"saysWhichSongFailed", "larger than a file may be", limit},
        {"saysWhichSongFailed", "a song that must not be read", trace},
        {"saysWhichSongFailed", "a song that has vanished meanwhile", trace},
        {"saysWhichSongFailed", "a song on a dying disk", trace},
        {"finishesTheRecordInHandOnATerminationSignal", "", signal},
        {"leavesABackgroundJobAlone", "", signal},
        {"showsProgressInOneLine", "", terminal},
        {"asksAboutSongsOfOthers", "", terminal},
        {"asksBeforeItReplacesASong", "", terminal},
        {"asksWhichOfTwoSongsABackupHolds", "", terminal},
        {"writesEachRecordAtOnce", "", terminal},
        {"listsTitlesWithoutTheirEscapeSequences", "", terminal},
        {"coloursWhereTheyAreWelcome", "", terminal},
        {"refuses", "a target that is a FIFO", fifo},
        {"refuses", "a target that is a device", "Windows has no devices among its files"},
        {"refuses", "full disk", limit},
        {"addsTheSystemsOwnWords", "above the limit", limit},
        {"addsTheSystemsOwnWords", "without the option", limit},
        {"refuses", "a disk that fills up", limit},
        {"neverOverwrites", "a link that leads nowhere", link},
        {"neverOverwrites", "a FIFO", fifo},
        {"leavesAloneWhatItCannotGiveBack", "a FIFO", fifo},
        {"keepsLinks", "symbolic link", link},
        {"keepsLinks", "both links", link},
        {"isTheUsersOwn", "", "Windows keeps no modes; a user's folder is the user's own there"},
        {"readingChangesNothing", "a killed run", trace},
        {"showsTwoProgramsAtOnce", "", trace},
        {"saysWhatAnInterruptedRunLeft", "", trace},
        {"reportsABuild", "a file that can't be written", limit},
    };
    for (const Row &known : rows) {
        if (std::strcmp(known.function, function) == 0 && std::strstr(row ? row : "", known.part))
            return known.reason;
    }
    return nullptr;
}

/** For the init() of a test. */
#ifdef TARVEL4_WINDOWS_CLI
#define SKIP_ROWS_WITHOUT_WINDOWS()                                                                \
    do {                                                                                           \
        if (const char *reason =                                                                   \
                whyNotOnWindows(QTest::currentTestFunction(), QTest::currentDataTag()))            \
            QSKIP(reason);                                                                         \
    } while (false)
#else
#define SKIP_ROWS_WITHOUT_WINDOWS() static_cast<void>(0)
#endif

} // namespace tarvel4
