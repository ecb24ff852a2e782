#include "samples/tune.h"

namespace tarvel4 {

namespace {

// General MIDI, from 0.
constexpr int harpsichord = 6;
constexpr int accordion = 21;
constexpr int nylonGuitar = 24;
constexpr int steelGuitar = 25;
constexpr int stringEnsemble = 48;
constexpr int trumpet = 56;
constexpr int flute = 73;
constexpr int recorder = 74;

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

Tune santaLucia()
{
    const auto verse = "g4:2 g4:2 c5:2 | c5:3 b4:1 b4:2 | f4:2 f4:2 a4:2 | a4:2 g4:4 |"
                       "e4:2 a4:2 g4:2 | g4:3 f4:1 f4:2 | d4:2 g4:2 f4:2 | f4:2 e4:4 |"
                       "g4:2 g4:2 c5:2 | c5:3 b4:1 b4:2 | f4:2 f4:2 a4:2 | a4:2 g4:4 |"
                       "e4:2 a4:2 g4:2 | g4:3 f4:1 f4:2 | d4:2 f4:2 b4:2 | d5:2 c5:4";
    const auto chorus = "g4:2 c5:2 e5:2 | e5:3 d5:1 d5:2 | f5:2 d5:2 b4:2 | d5:2 c5:4 |"
                        "a4:2 a4:2 c5:2 | c5:2 g4:4 | f4:2 a4:2 g4:2 | e4:6 |"
                        "g4:2 c5:2 e5:2 | e5:3 d5:1 d5:2 | f5:2 d5:2 b4:2 | d5:2 c5:4 |"
                        "f5:4 e5:2 | e5:2 c5:4 | g4:2 d5:2 b4:2 | c5:6";
    Tune tune;
    tune.fileName = text("SANTALUC.mid");
    tune.title = text("Santa Lucia");
    tune.copyright = text("(c) K-VARO 2026");
    tune.key = text("C");
    tune.tellsLength = tune.tellsTempo = tune.tellsMarkers = false;
    tune.bpm = 112;
    tune.eighthsInBar = 6;
    tune.melodyProgram = accordion;
    tune.chordProgram = nylonGuitar;
    tune.style = Tune::Style::Waltz;
    tune.sections = {
        {"Intro", "e5:3 d5:1 c5:2 | b4:3 a4:1 g4:2 | f4:2 g4:2 b4:2 | c5:4 r:2", "C G7 G7 C"},
        {"Verse 1", verse, "C G7 G7 C C F G7 C C G7 G7 C C F G7 C"},
        {"Chorus 1", chorus, "C G7 G7 C F C G7 C C G7 G7 C F C G7 C"},
        {"Fine", "e5:3 d5:1 b4:2 | c5:6", "G7 C"}};
    return tune;
}

Tune funiculi()
{
    const auto verse = "c5:2 b4:1 c5:2 d5:1 | c5:2 a4:1 a4:3 | g4:2 f#4:1 g4:2 a4:1 | g4:3 e4:3 |"
                       "d4:2 e4:1 f4:2 g4:1 | a4:2 b4:1 c5:3 | b4:2 a4:1 b4:2 c5:1 | d5:3 g4:3 |"
                       "c5:2 b4:1 c5:2 d5:1 | c5:2 a4:1 a4:3 | g4:2 f#4:1 g4:2 a4:1 | g4:3 e4:3 |"
                       "d4:2 e4:1 f4:2 a4:1 | g4:2 c5:1 e5:3 | d5:2 c5:1 b4:2 a4:1 | g4:6";
    const auto chorus = "g5:3 e5:3 | g5:3 e5:3 | f5:2 e5:1 d5:2 e5:1 | f5:3 d5:3 |"
                        "f5:3 d5:3 | f5:3 d5:3 | e5:2 d5:1 c5:2 d5:1 | e5:3 c5:3 |"
                        "a4:2 b4:1 c5:3 | g4:2 c5:1 e5:3 | f5:2 e5:1 d5:3 | d5:2 e5:1 d5:3 |"
                        "e5:2 f5:1 g5:3 | a5:2 g5:1 e5:3 | f5:2 d5:1 b4:2 d5:1 | c5:6";
    Tune tune;
    tune.fileName = text("FUNICULI.mid");
    tune.title = text("Funiculi funicula");
    tune.artist = text("Tradizionale");
    tune.author = text("L. Denza");
    tune.copyright = text("Public domain");
    tune.key = text("D");
    tune.tellsMarkers = false;
    tune.bpm = 132;
    tune.eighthsInBar = 6;
    tune.transpose = 2;
    tune.melodyProgram = trumpet;
    tune.chordProgram = accordion;
    tune.style = Tune::Style::Tarantella;
    tune.sections = {{"Intro",
                      "g4:2 a4:1 b4:2 c5:1 | d5:2 c5:1 b4:2 a4:1 | g4:2 a4:1 b4:2 d5:1 | c5:3 r:3",
                      "G7 G7 G7 C"},
                     {"Verse 1", verse, "C F C C G7 F G7 G7 C F C C G7 C D7 G7"},
                     {"Chorus 1", chorus, "C C G7 G7 G7 G7 C C F C Dm G7 C F G7 C"},
                     {"Fine", "e5:2 f5:1 d5:2 b4:1 | c5:6", "G7 C"}};
    return tune;
}

Tune bellaCiao()
{
    const auto verse = "c5:2 a4:2 r:1 e4:1 a4:1 b4:1 | c5:2 a4:2 r:1 e4:1 a4:1 b4:1 |"
                       "c5:2 b4:1 a4:1 c5:2 b4:1 a4:1 | e5:2 e5:2 e5:1 e5:1 d5:1 e5:1 |"
                       "f5:2 f5:2 r:1 f5:1 e5:1 d5:1 | f5:2 e5:2 r:1 e5:1 d5:1 c5:1 |"
                       "b4:4 c5:2 b4:2 |";
    const QByteArray verseThatGoesOn = QByteArray(verse) + "a4:5 e4:1 a4:1 b4:1";
    const QByteArray lastVerse = QByteArray(verse) + "a4:6 r:2";
    const auto chords = "Am Am Am A7 Dm Am E7 Am";
    Tune tune;
    tune.fileName = text("BELLACIA.kar");
    tune.title = text("Bella ciao");
    tune.artist = text("Coro popolare");
    tune.copyright = text("Traditional");
    tune.key = text("D-");
    tune.bpm = 120;
    tune.transpose = 5;
    tune.melodyProgram = accordion;
    tune.chordProgram = nylonGuitar;
    tune.style = Tune::Style::March;
    tune.sections = {
        {"Intro", "e5:2 d5:1 c5:1 b4:2 e4:2 | a4:4 r:1 e4:1 a4:1 b4:1", "E7 Am",
         "_ _ _ _ _ _ /U- na mat-"},
        {"Verse 1", verseThatGoesOn, chords,
         "ti- na mi son sve- glia- to, /o bel- la ciao, bel- la ciao, bel- la ciao, ciao, ciao! "
         "/U- na mat- ti- na mi son sve- glia- to /e_ho tro- va- to l'in- va- sor. "
         "/O par- ti-"},
        {"Verse 2", verseThatGoesOn, chords,
         "gia- no, por- ta- mi vi- a, /o bel- la ciao, bel- la ciao, bel- la ciao, ciao, ciao! "
         "/O par- ti- gia- no, por- ta- mi vi- a, /che mi sen- to di mo- rir. "
         "/E se io"},
        {"Verse 3", lastVerse, chords,
         "muo- io da par- ti- gia- no, /o bel- la ciao, bel- la ciao, bel- la ciao, ciao, ciao! "
         "/E se io muo- io da par- ti- gia- no, /tu mi de- vi sep- pel- lir."},
        {"Fine", "e5:2 d5:1 c5:1 b4:2 e4:2 | a4:8", "E7 Am"}};
    return tune;
}

Tune fraMartino()
{
    const auto round =
        "c5:2 d5:2 e5:2 c5:2 | c5:2 d5:2 e5:2 c5:2 | e5:2 f5:2 g5:4 | e5:2 f5:2 g5:4 |"
        "g5:1 a5:1 g5:1 f5:1 e5:2 c5:2 | g5:1 a5:1 g5:1 f5:1 e5:2 c5:2 |"
        "c5:2 g4:2 c5:4 | c5:2 g4:2 c5:4";
    Tune tune;
    tune.fileName = text("FRAMARTI.mf3");
    tune.title = text("Fra Martino");
    tune.artist = text("-");
    tune.author = text("Tradizionale");
    tune.genre = text("--");
    tune.longName = text("FRA MARTINO");
    tune.key = text("G");
    tune.tellsLength = tune.tellsMarkers = false;
    tune.bpm = 96;
    tune.transpose = -5;
    tune.melodyProgram = stringEnsemble;
    tune.chordProgram = nylonGuitar;
    tune.style = Tune::Style::Serenade;
    tune.sections = {
        {"Intro", "e5:2 f5:2 g5:4 | g5:1 a5:1 g5:1 f5:1 e5:2 c5:2 | d5:2 c5:2 b4:2 g4:2 | c5:6 r:2",
         "C C,Am G7 C"},
        {"Verse 1", round, "C C C C C C C C"},
        {"Chorus 1", round, "C,Am C,Am C,G7 C C,Am C,Am C C"},
        {"Fine", "c5:2 g4:2 c5:4 | c5:8", "C C"}};
    return tune;
}

Tune donnaMobile()
{
    const auto verse = "e5:2 e5:2 e5:2 | g5:3 f5:1 d5:2 | d5:2 d5:2 d5:2 | f5:3 e5:1 c5:2 |"
                       "e5:2 d5:2 c5:2 | c5:3 b4:1 a4:2 | d5:2 c5:2 a4:2 | a4:2 g4:4 |"
                       "e5:2 e5:2 e5:2 | g5:3 f5:1 d5:2 | d5:2 d5:2 d5:2 | f5:3 e5:1 c5:2 |"
                       "e5:2 d5:2 c5:2 | c5:3 b4:1 a4:2 | d5:2 c5:2 a4:2 | a4:2 g4:4";
    const auto chorus = "g5:2 f#5:2 g5:2 | a5:3 g5:1 e5:2 | f5:2 e5:2 f5:2 | g5:3 f5:1 d5:2 |"
                        "e5:2 d5:2 e5:2 | f5:3 e5:1 c5:2 | d5:2 e5:1 f5:1 d5:2 | c5:4 r:2 |"
                        "a5:4 f5:2 | g5:4 e5:2 | f5:2 d5:2 b4:2 | c5:4 r:2 |"
                        "a5:6 | g5:6 | b4:2 d5:2 b4:2 | c5:6";
    Tune tune;
    tune.fileName = text("DONNAMOB.mf4");
    tune.title = text("La donna e mobile");
    tune.artist = text("--");
    tune.longName = text("DONNA MOBILE");
    tune.key = text("Bb");
    tune.tellsTempo = tune.tellsMarkers = false;
    tune.bpm = 138;
    tune.eighthsInBar = 6;
    tune.transpose = -2;
    tune.melodyProgram = stringEnsemble;
    tune.chordProgram = harpsichord;
    tune.style = Tune::Style::Waltz;
    tune.sections = {{"Intro",
                      "e5:2 e5:2 e5:2 | g5:3 f5:1 d5:2 | d5:2 d5:2 d5:2 | f5:3 e5:1 c5:2 |"
                      "e5:2 d5:2 c5:2 | a4:2 d5:2 c5:2 | b4:2 d5:2 b4:2 | c5:4 r:2",
                      "C G7 G7 C C F G7 C"},
                     {"Verse 1", verse, "C G7 G7 C C F D7 G7 C G7 G7 C C F D7 G7"},
                     {"Chorus 1", chorus, "C C G7 G7 C F G7 C F C G7 C F C G7 C"},
                     {"Fine", "b4:2 d5:2 b4:2 | c5:6", "G7 C"}};
    return tune;
}

Tune greensleeves()
{
    const auto verse = "c5:2 d5:1 e5:1.5 f5:0.5 e5:1 | d5:2 b4:1 g4:1.5 a4:0.5 b4:1 |"
                       "c5:2 a4:1 a4:1.5 g#4:0.5 a4:1 | b4:2 g#4:1 e4:2 a4:1 |"
                       "c5:2 d5:1 e5:1.5 f5:0.5 e5:1 | d5:2 b4:1 g4:1.5 a4:0.5 b4:1 |"
                       "c5:1.5 b4:0.5 a4:1 g#4:1.5 f#4:0.5 g#4:1 | a4:5 a4:1 |"
                       "c5:2 d5:1 e5:1.5 f5:0.5 e5:1 | d5:2 b4:1 g4:1.5 a4:0.5 b4:1 |"
                       "c5:2 a4:1 a4:1.5 g#4:0.5 a4:1 | b4:2 g#4:1 e4:2 a4:1 |"
                       "c5:2 d5:1 e5:1.5 f5:0.5 e5:1 | d5:2 b4:1 g4:1.5 a4:0.5 b4:1 |"
                       "c5:1.5 b4:0.5 a4:1 g#4:1.5 f#4:0.5 g#4:1 | a4:6";
    const auto chorus = "g5:3 g5:1.5 f#5:0.5 e5:1 | d5:2 b4:1 g4:1.5 a4:0.5 b4:1 |"
                        "c5:2 a4:1 a4:1.5 g#4:0.5 a4:1 | b4:2 g#4:1 e4:3 |"
                        "g5:3 g5:1.5 f#5:0.5 e5:1 | d5:2 b4:1 g4:1.5 a4:0.5 b4:1 |"
                        "c5:1.5 b4:0.5 a4:1 g#4:1.5 f#4:0.5 g#4:1 | a4:6";
    const QByteArray twice = QByteArray(chorus) + '|' + chorus;
    Tune tune;
    tune.fileName = text("GREENSLV.mf5");
    tune.title = text("Greensleeves");
    tune.artist = text("Folk ensemble");
    tune.author = text("Traditional");
    tune.genre = text("POP & ROCK STRANIERO");
    tune.longName = text("GREENSLEEVES");
    tune.key = text("A-");
    tune.bpm = 100;
    tune.eighthsInBar = 6;
    tune.melodyProgram = recorder;
    tune.chordProgram = nylonGuitar;
    tune.style = Tune::Style::Ballad;
    tune.sections = {{"Intro", "a4:6 | g4:6 | a4:3 e4:3 | e4:5 a4:1", "Am G Am E"},
                     {"Verse 1", verse, "Am G Am E Am G Am,E Am Am G Am E Am G Am,E Am"},
                     {"Chorus 1", twice, "C G Am E C G Am,E Am C G Am E C G Am,E Am"},
                     {"Fine", "b4:1.5 a4:0.5 g#4:1 e4:3 | a4:6", "E Am"}};
    return tune;
}

Tune auldLangSyne()
{
    const auto endOfBoth = "c5:3 a4:1 a4:2 f4:2 | g4:3 f4:1 g4:2 a4:2 | f4:3 d4:1 d4:2 c4:2 |";
    const QByteArray verse = QByteArray("f4:3 f4:1 f4:2 a4:2 | g4:3 f4:1 g4:2 a4:2 |"
                                        "f4:3 f4:1 a4:2 c5:2 | d5:6 d5:2 |")
        + endOfBoth + "f4:6 d5:2";
    const QByteArray chorus = QByteArray("c5:3 a4:1 a4:2 f4:2 | g4:3 f4:1 g4:2 d5:2 |"
                                         "c5:3 a4:1 a4:2 c5:2 | d5:6 d5:2 |")
        + endOfBoth + "f4:8";
    const auto chords = "F C7 F Bb F C7 Bb,C7 F";
    Tune tune;
    tune.fileName = text("AULDLANG.mp3");
    tune.title = text("Auld Lang Syne");
    tune.artist = text("Folk ensemble");
    tune.tellsLength = tune.tellsTempo = false;
    tune.bpm = 112;
    tune.melodyProgram = flute;
    tune.chordProgram = steelGuitar;
    tune.style = Tune::Style::March;
    tune.sections = {{"Intro", "f4:3 d4:1 d4:2 c4:2 | f4:6 c4:2", "Bb,C7 F", "_ _ _ _ _ /Should"},
                     {"Verse 1", verse, chords,
                      "auld ac- quain- tance be for- got, /and nev- er brought to mind? "
                      "/Should auld ac- quain- tance be for- got, /and auld _ lang _ syne? /For"},
                     {"Chorus 1", chorus, chords,
                      "auld _ lang _ syne, my dear, /for auld _ lang _ syne, "
                      "/we'll tak' a cup o' kind- ness yet, /for auld _ lang _ syne."},
                     {"Fine", "f4:8", "F"}};
    return tune;
}

} // namespace

QVector<Tune> allTunes()
{
    return {santaLucia(),  funiculi(),     bellaCiao(),   fraMartino(),
            donnaMobile(), greensleeves(), auldLangSyne()};
}

} // namespace tarvel4
