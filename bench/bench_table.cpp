// The window with many songs, and the editor of a large one: how long until it shows what was asked
// for. The many are appended as an import appends them, without their files.
#include "db/usersongsreltablemodel.h"
#include "songs/metasong.h"
#include "ui/appearance.h"
#include "ui/dataeditdialog.h"
#include "ui/mainwindow.h"
#include "ui/songtable.h"

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QTableView>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <random>
#include <vector>

using namespace tarvel4;

namespace {

constexpr int mostMilliseconds = 50;

const char *const words[] = {"luna",  "Carta", "città", "Perché", "AMORE", "sole",
                             "notte", "È",     "mare",  "treno",  "vento", "ricordo"};

QString title(std::mt19937 &random)
{
    QStringList parts;
    for (int i = 0; i < 4; ++i)
        parts += QString::fromUtf8(words[random() % (sizeof words / sizeof *words)]);
    return parts.join(QLatin1Char(' '));
}

SongInfo song(int number, std::mt19937 &random)
{
    SongInfo info;
    info.format = QStringLiteral("MIDI");
    info.title = title(random);
    info.artist = QStringLiteral("Ada Bellardi %1").arg(random() % 500);
    info.genre = QStringLiteral("BALLO LISCIO");
    info.author = QStringLiteral("Corvinelli - Dondolini");
    info.length = 60 + static_cast<int>(random() % 6000);
    info.bpm = 60 + static_cast<int>(random() % 120);
    info.key = QStringLiteral("A-");
    info.filename = QStringLiteral("/home/musician/songs/ballo/SONG%1.mid").arg(number);
    info.shortname = QStringLiteral("SONG%1.mid").arg(number);
    return info;
}

void showAll()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    QCoreApplication::processEvents(); // what the first round asked for
}

/** Milliseconds that this process had so far: other programs don't count. */
double processorTime()
{
    return static_cast<double>(std::clock()) * 1e3 / CLOCKS_PER_SEC;
}

/** Prints the median and the longest of some rounds, and tells whether that is short enough. */
bool measure(const char *what, int rounds, const std::function<void(int)> &action)
{
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round) {
        const double before = processorTime();
        action(round);
        showAll();
        times.push_back(processorTime() - before);
    }
    std::sort(times.begin(), times.end());
    std::printf("%-46s %10.1f %10.1f\n", what, times[times.size() / 2], times.back());
    return times.back() <= mostMilliseconds;
}

bool search(QLineEdit &field, QComboBox &marks)
{
    const QString typed = QStringLiteral("perche citta 12");
    const auto keys = static_cast<int>(typed.size());
    bool isQuick = true;
    isQuick &= measure("a keystroke in the search field", keys,
                       [&](int round) { field.setText(typed.left(round + 1)); });
    isQuick &= measure("a backspace", keys,
                       [&](int round) { field.setText(typed.left(keys - 1 - round)); });
    isQuick &= measure("from all songs to none and back", 10, [&](int round) {
        field.setText(round % 2 == 0 ? QStringLiteral("#") : QString());
    });
    field.clear();
    isQuick &= measure("another state of songs", 8,
                       [&](int round) { marks.setCurrentIndex((round + 1) % 4); });
    return isQuick;
}

bool sort(QTableView &table, const char *name)
{
    const std::pair<const char *, int> columns[] = {{"by title", 2}, {"by time", 6}, {"by Bpm", 7}};
    bool isQuick = true;
    for (const auto &[by, column] : columns) {
        const QByteArray what = QByteArray(name) + ' ' + by;
        isQuick &= measure(what.constData(), 6, [&table, column = column](int round) {
            // as a click does; sortByColumn() sorts twice
            table.horizontalHeader()->setSortIndicator(
                column, round % 2 == 0 ? Qt::AscendingOrder : Qt::DescendingOrder);
        });
    }
    return isQuick;
}

/** A MIDI song of 1 MB: a title and a syllable of a lyric after the other, the slowest to search
 * for our events. */
QByteArray largeMidi()
{
    constexpr int megabyte = 1'000'000;
    QByteArray track("\0\xFF\x03\x06"
                     "Volare",
                     10);
    while (track.size() < megabyte)
        track.append("\x10\xFF\x05\2la", 6);
    track.append("\0\xFF\x2F\0", 4);
    QByteArray midi("MThd\0\0\0\6\0\0\0\1\0\x60MTrk", 18);
    for (int shift = 24; shift >= 0; shift -= 8)
        midi.append(static_cast<char>(track.size() >> shift));
    return midi + track;
}

/** An MP3 whose tag holds a title and a picture of almost 1 MB, as large as a tag can be. */
QByteArray largeTag()
{
    constexpr int pictureSize = 990'000;
    QByteArray tag("TIT2\0\0\0\7\0\0\0Volare", 17);
    QByteArray picture(pictureSize, '\0');
    std::mt19937 random(4);
    for (char &byte : picture)
        byte = static_cast<char>(random());
    tag += QByteArray("APIC\0\x0F\x1B\x30\0\0", 10) + picture;
    QByteArray header("ID3\3\0\0", 6);
    for (int shift = 21; shift >= 0; shift -= 7)
        header.append(static_cast<char>(tag.size() >> shift & 0x7F));
    return header + tag + "\xFF\xFB";
}

bool edit(const char *what, const QByteArray &song, const QString &name)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(name));
    MetaSong loaded;
    if (!file.open(QIODevice::WriteOnly) || file.write(song) != song.size() || !file.flush()
        || !loaded.importFile(file.fileName()))
        return false;
    SongInfo info;
    loaded.readInfo(info);
    DataEditDialog dialog;
    dialog.setSong(info);
    dialog.setCheck([&loaded](const SongInfo &edited) { return loaded.checkEdit(edited); });
    dialog.show();
    showAll();
    auto *title = dialog.findChild<QLineEdit *>(QStringLiteral("titleLineEdit"));
    return measure(what, 40, [title](int) { title->insert(QStringLiteral("x")); });
}

} // namespace

int main(int argc, char *argv[])
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    Appearance::applyStyleSheet(QStringLiteral(":/style/default.qss"));
    MainWindow window;
    window.resize(1280, 800);
    window.show();
    auto *table = window.findChild<QTableView *>(QStringLiteral("userLibraryTableView"));
    auto *model = qobject_cast<UserSongsRelTableModel *>(table->model());
    if (!model)
        return 1;
    auto *field = window.findChild<QLineEdit *>(QStringLiteral("searchLineEdit"));
    auto *marks = window.findChild<QComboBox *>(QStringLiteral("searchMarkComboBox"));
    showAll();

    const int songs = argc > 1 ? QByteArray(argv[1]).toInt() : 10'000;
    std::mt19937 random(4);
    std::printf("%d songs, milliseconds of the processor %11s %10s\n", songs, "median", "longest");
    bool isQuick = measure("first rows", 1, [&](int) { model->appendSong(song(0, random)); });
    double before = processorTime();
    for (int i = 1; i < songs; ++i)
        model->appendSong(song(i, random));
    model->totalRows();
    showAll();
    std::printf("%-46s %10.1f\n", "all rows (as part of the import)", processorTime() - before);
    before = processorTime();
    for (int row = 0; row < songs; ++row) {
        model->setStatus(row, UserSongsRelTableModel::Updated);
        model->setMark(row,
                       row % 3 == 0 ? UserSongsRelTableModel::MarkedUpdated
                                    : UserSongsRelTableModel::MarkedLeftAlone);
    }
    SongTable::readAgain(*table, *model);
    showAll();
    std::printf("%-46s %10.1f\n", "states of all rows (as part of a job)",
                processorTime() - before);

    isQuick &= search(*field, *marks);
    isQuick &= sort(*table, "sort");
    table->setCurrentIndex(model->cellIndex(songs / 2, 2));
    isQuick &= sort(*table, "sort with a selected song");
    field->setText(QStringLiteral("perche"));
    isQuick &= sort(*table, "sort of found songs");
    field->clear();
    model->totalRows();
    isQuick &= measure("scroll by a page", 100, [&](int) {
        table->verticalScrollBar()->triggerAction(QScrollBar::SliderPageStepAdd);
    });
    isQuick &= measure("scroll to the end and back", 4, [&](int round) {
        round % 2 == 0 ? table->scrollToBottom() : table->scrollToTop();
    });
    isQuick &=
        edit("a letter in the editor, MIDI of 1 MB", largeMidi(), QStringLiteral("large.mid"));
    isQuick &= edit("a letter in the editor, MP3 with a tag of 1 MB", largeTag(),
                    QStringLiteral("large.mp3"));
    std::printf(isQuick ? "none takes more than %d ms\n" : "some take more than %d ms\n",
                mostMilliseconds);
    return 0;
}
