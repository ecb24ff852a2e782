#include "ui/songactions.h"

#include "db/usersongsreltablemodel.h"
#include "library/songpath.h"
#include "ui/editmany.h"
#include "ui/listening.h"
#include "ui/manualedit.h"
#include "ui/plaintext.h"
#include "ui/showinfolder.h"
#include "ui/songtable.h"
#include "ui/songtabledelegate.h"
#include "ui/unbrokenlabel.h"
#include "ui/windowhost.h"

#include <QApplication>
#include <QFile>
#include <QMenu>
#include <QMessageBox>
#include <QRegularExpression>
#include <QShortcut>
#include <QTableView>

#include <functional>

namespace tarvel4 {

namespace {

constexpr int markKey = static_cast<int>(Qt::CTRL) | static_cast<int>(Qt::Key_I);

/** A key that is pressed twice comes again before what it opened has the focus. */
void addKey(QTableView &table, const QKeySequence &key, const std::function<void()> &act)
{
    auto *shortcut = new QShortcut(key, &table, nullptr, nullptr, Qt::WidgetShortcut);
    QObject::connect(shortcut, &QShortcut::activated, &table, [act] {
        if (!QApplication::activeModalWidget() && !QApplication::activePopupWidget())
            act();
    });
}

/** Where a box may break a text: also within the long words of a path, for a small screen. */
QString wrappable(const QString &text)
{
    static const QRegularExpression longWord(QStringLiteral("(\\S{20})(?=\\S)"));
    return UnbrokenLabel::unbroken(text).replace(longWord, QStringLiteral("\\1\u200B"));
}

} // namespace

SongActions::SongActions(const EditPlace &at, Listening &listening)
    : m_at(at)
    , m_listening(listening)
{
    const auto editCurrent = [this] { edit(m_at.table.currentIndex().row()); };
    for (const int key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_F2})
        addKey(m_at.table, key, editCurrent);
    addKey(m_at.table, Qt::Key_Delete, [this] {
        if (m_at.table.currentIndex().isValid())
            deleteFile(m_at.table.currentIndex().row());
    });
    addKey(m_at.table, markKey, [this] { tellMark(m_at.table.currentIndex().row()); });
#ifndef Q_OS_WIN // where the system itself asks for the menu of what has the focus
    addKey(m_at.table, QKeySequence(QLatin1String("Shift+F10"), QKeySequence::PortableText),
           [this] {
               m_at.table.scrollTo(m_at.table.currentIndex());
               showMenu(m_at.table.visualRect(m_at.table.currentIndex()).center());
           });
#endif
}

void SongActions::edit(int row)
{
    if (row < 0)
        return;
    m_listening.stop();
    ManualEdit(m_at).editRow(row);
}

void SongActions::editMany()
{
    if (!m_at.host.isRunning())
        EditMany(m_at).run();
}

void SongActions::showMenu(const QPoint &pos)
{
    const QModelIndex index = m_at.table.indexAt(pos);
    QMenu menu(m_at.table.window());
    const QAction *remove = menu.addAction(tr("Remove from list"));
    QAction *erase = menu.addAction(tr("Delete file"));
    erase->setShortcut(Qt::Key_Delete);
    menu.addSeparator();
    QAction *change = menu.addAction(tr("&Modifica..."));
    change->setShortcut(Qt::Key_F2);
    const QAction *show = menu.addAction(tr("Mostra nella cartella"));
    QAction *tell = nullptr;
    if (!markTextOf(index.row()).isEmpty()) {
        tell = menu.addAction(tr("&Perché questo segno?"));
        tell->setShortcut(markKey);
    }
    if (index.isValid())
        m_listening.addTo(menu, index.row());
    const QAction *chosen = menu.exec(m_at.table.viewport()->mapToGlobal(pos));
    if (!chosen || !index.isValid())
        return;
    if (chosen == remove)
        SongTable::removeRow(m_at.table, m_at.model, index.row());
    else if (chosen == erase)
        deleteFile(index.row());
    else if (chosen == change)
        edit(index.row());
    else if (chosen == show)
        showInFolder(m_at.model.fileNameOf(index.row()));
    else if (chosen == tell)
        tellMark(index.row());
}

void SongActions::deleteFile(int row)
{
    const QString path = m_at.model.fileNameOf(row);
    QMessageBox box(QMessageBox::Question, tr("Attenzione"),
                    tr("Sei sicuro di voler cancellare il file?"),
                    QMessageBox::Yes | QMessageBox::No, m_at.table.window());
    PlainText::addTo(box, SongPath::fileName(path));
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::No);
    if (box.exec() != QMessageBox::Yes)
        return;
    m_listening.stop(path);
    QFile::remove(path);
    // required: also when the file is still there
    SongTable::removeRow(m_at.table, m_at.model, row);
}

QString SongActions::markTextOf(int row) const
{
    return SongTableDelegate::markText(m_at.model.cellIndex(row, SongTable::firstColumn));
}

/** What the mouse gets as a tool tip. */
void SongActions::tellMark(int row)
{
    const QString text = markTextOf(row);
    if (text.isEmpty())
        return;
    QMessageBox box(QMessageBox::Information, tr("Segno della song"), wrappable(text),
                    QMessageBox::Ok, m_at.table.window());
    PlainText::addTo(box, wrappable(SongPath::fileName(m_at.model.fileNameOf(row))));
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

} // namespace tarvel4
