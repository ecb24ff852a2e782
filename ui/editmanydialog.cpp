#include "ui/editmanydialog.h"

#include "songs/song.h"
#include "ui/elidedlabel.h"
#include "ui/fieldnotes.h"
#include "ui/listcompleter.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTableWidget>

#include <algorithm>
#include <utility>

namespace tarvel4 {

EditManyDialog::EditManyDialog(const QStringList &genres, const QStringList &artists,
                               QWidget *parent)
    : QDialog(parent)
    , m_songs(new QTableWidget)
    , m_count(new QLabel)
    , m_apply(new QPushButton(tr("A&pplica")))
{
    setWindowTitle(tr("Modifica più song"));
    setUpList();
    m_count->setObjectName(QStringLiteral("countLabel"));
    m_apply->setObjectName(QStringLiteral("applyPushButton"));
    m_apply->setDefault(true);
    auto *all = new QPushButton(tr("Scegli &tutte"));
    all->setObjectName(QStringLiteral("allPushButton"));
    auto *exit = new QPushButton(tr("A&nnulla"));
    exit->setObjectName(QStringLiteral("exitPushButton"));

    auto *caption = new QLabel(tr("&Song da modificare (con Ctrl o Maiusc se ne scelgono più):"));
    caption->setBuddy(m_songs);
    auto *choice = new QHBoxLayout;
    choice->addWidget(m_count, 1);
    choice->addWidget(all);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_apply);
    buttons->addWidget(exit);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(caption);
    layout->addWidget(m_songs, 1);
    layout->addLayout(choice);
    layout->addLayout(fieldForm(genres, artists));
    layout->addLayout(noteLine());
    layout->addLayout(buttons);

    connect(m_songs, &QTableWidget::itemSelectionChanged, this, &EditManyDialog::showChoice);
    connect(all, &QPushButton::clicked, m_songs, &QTableWidget::selectAll);
    connect(m_apply, &QPushButton::clicked, this, &QDialog::accept);
    connect(exit, &QPushButton::clicked, this, &QDialog::reject);
    showChoice();
    constexpr int frameHeight = 40;
    resize(QSize(720, 480).boundedTo(screen()->availableSize() - QSize(0, frameHeight)));
}

void EditManyDialog::setUpList()
{
    m_songs->setObjectName(QStringLiteral("songsTableWidget"));
    m_songs->setAccessibleName(tr("Song da modificare"));
    m_songs->setColumnCount(3);
    m_songs->setHorizontalHeaderLabels({tr("Titolo"), tr("Interprete"), tr("File")});
    m_songs->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_songs->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_songs->horizontalHeader()->setHighlightSections(false);
    m_songs->verticalHeader()->hide();
    m_songs->setShowGrid(false);
    m_songs->setTabKeyNavigation(false);
    m_songs->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_songs->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_songs->setSelectionMode(QAbstractItemView::ExtendedSelection);
}

QLayout *EditManyDialog::fieldForm(const QStringList &genres, const QStringList &artists)
{
    auto *form = new QGridLayout;
    form->setColumnStretch(1, 1);
    m_genre = addList(*form, QStringLiteral("genre"), m_hasGenre, tr("&Genere Musicale:"), genres);
    m_artist = addList(*form, QStringLiteral("artist"), m_hasArtist, tr("&Interprete:"), artists);
    m_author = new QLineEdit;
    m_author->setObjectName(QStringLiteral("authorLineEdit"));
    addField(*form, QStringLiteral("author"), m_hasAuthor, tr("&Autore:"), m_author);
    return form;
}

/** The line that says what the texts in the form, which is there, would do. */
QLayout *EditManyDialog::noteLine()
{
    auto *icon = new QLabel;
    constexpr int height = 18;
    icon->setMinimumSize(height, height);
    auto *line = new ElidedLabel;
    line->setObjectName(QStringLiteral("noteLabel"));
    line->setElideMode(Qt::ElideRight);
    m_notes = new FieldNotes(icon, line, this);
    const std::pair<SongField, QLineEdit *> texts[] = {{SongField::Genre, m_genre->lineEdit()},
                                                       {SongField::Artist, m_artist->lineEdit()},
                                                       {SongField::Author, m_author}};
    for (const auto &[field, edit] : texts) {
        m_notes->addField(keyOf(field), edit);
        connect(edit, &QLineEdit::textChanged, this, &EditManyDialog::showNotes);
    }
    auto *layout = new QHBoxLayout;
    layout->addWidget(icon);
    layout->addWidget(line, 1);
    return layout;
}

QComboBox *EditManyDialog::addList(QGridLayout &form, const QString &key, QCheckBox *&tick,
                                   const QString &name, const QStringList &entries)
{
    auto *box = new QComboBox;
    box->setObjectName(key + QLatin1String("ComboBox"));
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(20);
    box->addItems(entries);
    box->setEditText(QString());
    new ListCompleter(box);
    addField(form, key, tick, name, box);
    return box;
}

/** A field that is open where its box is ticked. */
void EditManyDialog::addField(QGridLayout &form, const QString &key, QCheckBox *&tick,
                              const QString &name, QWidget *field)
{
    const QString plain = QString(name).remove(QLatin1Char('&')).remove(QLatin1Char(':'));
    tick = new QCheckBox(name);
    tick->setObjectName(key + QLatin1String("CheckBox"));
    tick->setAccessibleName(tr("Scrivi in tutte: %1").arg(plain));
    field->setAccessibleName(plain);
    field->setAccessibleDescription(plain); // a list has what is chosen in it as its name
    field->setEnabled(false);
    connect(tick, &QCheckBox::toggled, this, [this, field](bool isOpen) {
        field->setEnabled(isOpen);
        if (isOpen)
            field->setFocus();
        showChoice();
    });
    const int row = form.rowCount();
    form.addWidget(tick, row, 0);
    form.addWidget(field, row, 1);
}

void EditManyDialog::setSongs(const QVector<Song> &songs)
{
    m_songs->clearContents();
    m_songs->setRowCount(static_cast<int>(songs.size()));
    for (int row = 0; row < songs.size(); ++row) {
        const Song &song = songs.at(row);
        int column = 0;
        for (const QString &text : {song.title, song.artist, song.fileName})
            m_songs->setItem(row, column++, new QTableWidgetItem(text));
    }
    showChoice();
}

void EditManyDialog::choose(const QVector<int> &songs)
{
    QItemSelection rows;
    for (const int song : songs)
        rows.select(m_songs->model()->index(song, 0), m_songs->model()->index(song, 0));
    m_songs->selectionModel()->select(
        rows, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    if (!songs.isEmpty()) {
        const QModelIndex first = m_songs->model()->index(songs.constFirst(), 0);
        m_songs->selectionModel()->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
        m_songs->scrollTo(first);
    }
}

QVector<int> EditManyDialog::chosen() const
{
    QVector<int> songs;
    const QModelIndexList rows = m_songs->selectionModel()->selectedRows();
    for (const QModelIndex &index : rows)
        songs.append(index.row());
    std::sort(songs.begin(), songs.end());
    return songs;
}

ApplyToAll EditManyDialog::fields() const
{
    ApplyToAll fields;
    fields.genre = m_hasGenre->isChecked();
    fields.artist = m_hasArtist->isChecked();
    fields.author = m_hasAuthor->isChecked();
    return fields;
}

SongInfo EditManyDialog::values() const
{
    SongInfo values;
    values.genre = m_genre->currentText().trimmed();
    values.artist = m_artist->currentText().trimmed();
    values.author = m_author->text().trimmed();
    return values;
}

void EditManyDialog::setCheck(std::function<QVector<FieldNote>()> check)
{
    m_check = std::move(check);
    showNotes();
}

void EditManyDialog::showNotes()
{
    m_notes->show(m_check ? m_check() : QVector<FieldNote>());
}

void EditManyDialog::showChoice()
{
    const int chosen = static_cast<int>(m_songs->selectionModel()->selectedRows().size());
    m_count->setText(tr("Song scelte: %1 di %2").arg(chosen).arg(m_songs->rowCount()));
    m_apply->setEnabled(chosen > 0 && fields().any());
    showNotes();
}

} // namespace tarvel4
