#include "ui/listening.h"

#include "db/usersongsreltablemodel.h"
#include "library/songrows.h"
#include "ui/listenstrip.h"

#include <QAction>
#include <QApplication>
#include <QFileInfo>
#include <QMenu>
#include <QMessageBox>
#include <QTableView>

#include <utility>

namespace tarvel4 {

namespace {

constexpr int typeColumn = 1;
constexpr int fromStart = -1; // in place of a marker
constexpr int showEvery = 200; // ms

} // namespace

Listening::Listening(QTableView &table, UserSongsRelTableModel &model, QMenu &tools,
                     ListenStrip &strip, std::unique_ptr<SongPlayers> players)
    : m_table(table)
    , m_model(model)
    , m_strip(strip)
    , m_players(std::move(players))
{
    tools.addSeparator();
    m_listen = tools.addAction(QString());
    m_listen->setObjectName(QStringLiteral("actionListen"));
    m_listen->setShortcut(Qt::Key_Space);
    m_listen->setShortcutContext(Qt::WidgetShortcut);
    table.addAction(m_listen);
    m_fromMark = tools.addMenu(QString());
    m_fromMark->setObjectName(QStringLiteral("menuListenFromMark"));

    connect(m_listen, &QAction::triggered, this, [this] {
        if (!QApplication::activeModalWidget()) // as that of a job, which gets the keys later
            toggle(m_table.currentIndex().row());
    });
    connect(m_fromMark, &QMenu::aboutToShow, this,
            [this] { addMarksOf(*m_fromMark, m_model.fileNameOf(m_table.currentIndex().row())); });
    connect(&tools, &QMenu::aboutToShow, this, &Listening::updateTools);
    // While the menu is closed the space bar asks for the row that is current then.
    connect(&tools, &QMenu::aboutToHide, this, [this] {
        m_listen->setVisible(true);
        m_listen->setEnabled(true);
    });
    connect(&strip, &ListenStrip::stopAsked, this, [this] { stop(); });
    connect(&strip, &ListenStrip::markAsked, this, &Listening::playMark);
    m_timer.setInterval(showEvery);
    connect(&m_timer, &QTimer::timeout, this,
            [this] { m_strip.showPosition(m_song, m_player->position()); });
    // What leaves the table is looked at when the table is whole again.
    const auto look = [this] { QTimer::singleShot(0, this, &Listening::stopWhereUnlisted); };
    connect(&model, &QAbstractItemModel::modelReset, this, look);
    connect(&model, &QAbstractItemModel::rowsRemoved, this, look);
    setTexts(); // which players there are is looked at when somebody wants one
}

Listening::~Listening()
{
    stop();
}

void Listening::addTo(QMenu &menu, int row)
{
    if (!playerOf(row))
        return;
    const QString path = m_model.fileNameOf(row);
    menu.addSeparator();
    const bool isHeard = m_player && m_song.path == path;
    QAction *listen = menu.addAction(isHeard ? tr("Ferma l'ascolto") : tr("Ascolta"));
    listen->setShortcut(m_listen->shortcut()); // only shown: the menu has the keys while it is open
    connect(listen, &QAction::triggered, this, [this, row] { toggle(row); });
    if (SongSound::kindOf(m_model.cellIndex(row, typeColumn).data().toString())
        == SongSound::Kind::Mp3)
        return;
    QMenu *marks = menu.addMenu(tr("Ascolta da un marker"));
    connect(marks, &QMenu::aboutToShow, this, [this, marks, path] { addMarksOf(*marks, path); });
}

void Listening::stop()
{
    m_timer.stop();
    if (m_player)
        std::exchange(m_player, nullptr)->stop();
    const bool hasFocus = m_strip.isAncestorOf(QApplication::focusWidget());
    m_strip.hide();
    if (hasFocus)
        m_table.setFocus();
}

void Listening::stop(const QString &path)
{
    if (m_player && m_song.path == path)
        stop();
}

/** Null for no row, and where such a song can't be heard here. */
SongPlayer *Listening::playerOf(int row)
{
    if (row < 0 || !m_players)
        return nullptr;
    const QString type = m_model.cellIndex(row, typeColumn).data().toString();
    return m_players->playerFor(SongSound::kindOf(type));
}

void Listening::updateTools()
{
    const int row = m_table.currentIndex().row();
    const QString type = row < 0 ? QString() : m_model.cellIndex(row, typeColumn).data().toString();
    const bool hasPlayer = m_players
        && (row < 0 ? m_players->playerFor(SongSound::Kind::Midi)
                    : m_players->playerFor(SongSound::kindOf(type)));
    const bool isHeard = m_player && row >= 0 && m_song.path == m_model.fileNameOf(row);
    setTexts(isHeard);
    m_listen->setVisible(hasPlayer);
    m_listen->setEnabled(row >= 0);
    m_fromMark->menuAction()->setVisible(hasPlayer
                                         && SongSound::kindOf(type) == SongSound::Kind::Midi);
    m_fromMark->setEnabled(row >= 0);
}

void Listening::setTexts(bool isHeard)
{
    m_listen->setText(isHeard ? tr("Ferma l'ascolto") : tr("Ascolta"));
    m_fromMark->setTitle(tr("Ascolta da un marker"));
}

void Listening::addMarksOf(QMenu &menu, const QString &path)
{
    menu.clear();
    m_offered = SongSound();
    const Outcome read = SongSound::read(path, m_offered);
    if (!read || m_offered.marks.isEmpty()) {
        const QString cause = read ? tr("Questa song non ha marker") : read.sentence();
        menu.addAction(cause)->setEnabled(false);
        return;
    }
    ListenStrip::addMarks(menu, m_offered, [this](int mark) { play(m_offered.path, mark); });
}

void Listening::toggle(int row)
{
    if (row < 0)
        return;
    const QString path = m_model.fileNameOf(row);
    if (m_player && m_song.path == path)
        stop();
    else if (playerOf(row))
        play(path, fromStart);
}

void Listening::play(const QString &path, int mark)
{
    stop();
    const Outcome read = SongSound::read(path, m_song);
    if (!read)
        return tell(path, read.sentence());
    SongPlayer *player = m_players->playerFor(m_song.kind);
    if (!player)
        return;
    m_player = player;
    playMark(mark);
}

void Listening::playMark(int mark)
{
    if (!m_player)
        return;
    const qint64 from = mark >= 0 && mark < m_song.marks.size() ? m_song.marks.at(mark).ms : 0;
    const QString cause = m_player->play(m_song, from, [this](const QString &why) { ended(why); });
    if (!cause.isEmpty())
        return ended(cause);
    m_strip.showSong(m_song);
    m_strip.showPosition(m_song, from);
    m_timer.start();
}

void Listening::ended(const QString &cause)
{
    stop();
    if (!cause.isEmpty())
        tell(m_song.path, cause);
}

void Listening::tell(const QString &path, const QString &cause)
{
    QMessageBox box(QMessageBox::Warning, tr("Ascolto"),
                    tr("Non è possibile ascoltare la song:") + QLatin1String("\n\n")
                        + QFileInfo(path).fileName() + QLatin1String(": ") + cause,
                    QMessageBox::Ok, m_table.window());
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

void Listening::stopWhereUnlisted()
{
    if (m_player && !SongRows::paths(m_model).contains(m_song.path))
        stop();
}

} // namespace tarvel4
