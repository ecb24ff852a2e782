#pragma once

#include "tests/library/texts.h"
#include "ui/aboutdialog.h"
#include "ui/backupdialog.h"
#include "ui/dataeditdialog.h"
#include "ui/helpdialog.h"
#include "ui/indexdialog.h"
#include "ui/nocopyrightdialog.h"
#include "ui/proceeddialog.h"
#include "ui/progressdialog.h"
#include "ui/songslistdialog.h"

#include <QBoxLayout>
#include <QFileDialog>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QToolButton>

#include <memory>

namespace tarvel4 {

/** Each dialog of the program, and what it takes from Qt, with something to see in it. */
namespace ExampleWindows {

template <class Dialog> std::unique_ptr<QWidget> make()
{
    return std::make_unique<Dialog>();
}

template <> inline std::unique_ptr<QWidget> make<ProgressDialog>()
{
    const ProgressTexts texts{text("x"), text("x"), text("Interrompi")};
    return std::make_unique<ProgressDialog>(texts, 10, nullptr);
}

template <> inline std::unique_ptr<QWidget> make<DataEditDialog>()
{
    auto dialog = std::make_unique<DataEditDialog>();
    SongInfo song;
    song.title = song.artist = song.genre = song.author = text("Volare");
    dialog->setSong(song);
    return dialog;
}

template <> inline std::unique_ptr<QWidget> make<QMessageBox>()
{
    auto box = std::make_unique<QMessageBox>(QMessageBox::Question, text("x"), text("Volare?"),
                                             QMessageBox::Yes | QMessageBox::No);
    box->setDetailedText(text("Volare"));
    box->show();
    for (QAbstractButton *button : box->buttons()) {
        if (box->buttonRole(button) == QMessageBox::ActionRole)
            button->click();
    }
    return box;
}

template <> inline std::unique_ptr<QWidget> make<QFileDialog>()
{
    auto dialog = std::make_unique<QFileDialog>(nullptr, QString(), text("/"));
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    return dialog;
}

template <> inline std::unique_ptr<QWidget> make<QMenu>()
{
    auto menu = std::make_unique<QMenu>();
    menu->addAction(text("Volare"))->setCheckable(true);
    menu->addAction(text("Azzurro"));
    menu->addAction(text("Quando"))->setEnabled(false);
    menu->setActiveAction(menu->actions().constLast());
    menu->setActiveAction(menu->actions().at(1));
    return menu;
}

/** What the program's own dialogs may hold beside what they hold today. */
template <> inline std::unique_ptr<QWidget> make<QDialog>()
{
    auto dialog = std::make_unique<QDialog>();
    auto *layout = new QVBoxLayout(dialog.get());
    for (const char *property : {"muted", "problem"}) {
        auto *label = new QLabel(text("Volare"));
        label->setProperty(property, true);
        layout->addWidget(label);
    }
    auto *button = new QToolButton;
    button->setText(text("Volare"));
    layout->addWidget(button);
    auto *tabs = new QTabWidget;
    tabs->addTab(new QPlainTextEdit(text("Volare")), text("Uno"));
    tabs->addTab(new QWidget, text("Due"));
    layout->addWidget(tabs);
    auto *link = new QLabel(text("<a href=\"x\">Volare</a>"));
    layout->addWidget(link);
    return dialog;
}

inline const QMap<QString, std::unique_ptr<QWidget> (*)()> makers{
    {text("about"), make<AboutDialog>},
    {text("backup"), make<BackupDialog>},
    {text("edit"), make<DataEditDialog>},
    {text("help"), make<HelpDialog>},
    {text("index"), make<IndexDialog>},
    {text("list"), make<SongsListDialog>},
    {text("progress"), make<ProgressDialog>},
    {text("question"), make<NoCopyrightDialog>},
    {text("summary"), make<ProceedDialog>},
    {text("message"), make<QMessageBox>},
    {text("files"), make<QFileDialog>},
    {text("menu"), make<QMenu>},
    {text("other"), make<QDialog>}};

} // namespace ExampleWindows

} // namespace tarvel4
