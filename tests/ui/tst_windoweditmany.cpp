#include "tests/ui/windowtest.h"

#include "ui/appearance.h"
#include "ui/editmanydialog.h"

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QTableWidget>
#include <QTranslator>

using namespace tarvel4;
using namespace TestFiles;

/** Several songs get the same genre, artist or author, while the table keeps to one row. */
class tst_WindowEditMany : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        makeFolder();
        openWindowWithoutSummaries();
    }
    void cleanup() { closeWindow(); }

    void chosenSongsGetTheTickedFields_data()
    {
        const Table<QString, QString, QStringList> row;
        row("one field", "02", "genre", strings({"", "", "NEW"}));
        row("two fields", "01", "artist author", strings({"NEW", "NEW", ""}));
        row("all of them, in all songs", "012", "genre artist author",
            strings({"NEW", "NEW", "NEW"}));
    }
    void chosenSongsGetTheTickedFields()
    {
        const auto [songs, fields, artistAuthorGenre] = cells<QString, QString, QStringList>();
        importThree();
        const QList<QByteArray> before = bytes();
        QString chosen;
        m_driver->expect<EditManyDialog>(
            [&, songs = songs, fields = fields](EditManyDialog &dialog) {
                chosen = numbers(dialog);
                choose(dialog, songs);
                for (const QString &field : fields.split(QLatin1Char(' ')))
                    fill(dialog, field, text(" NEW "));
                click(dialog, "applyPushButton");
            });
        table()->selectRow(1);
        trigger("actionEditMany");
        QCOMPARE(chosen, text("1")); // the table's row
        for (int song = 0; song < 3; ++song) {
            const bool isChosen = songs.contains(QString::number(song));
            QCOMPARE(QStringList({column(Artist).at(song), column(Author).at(song),
                                  column(Genre).at(song)}),
                     isChosen ? artistAuthorGenre : strings({"", "", ""}));
            QCOMPARE(column(Status).at(song), text(isChosen ? "2" : "0"));
            QCOMPARE(bytes().at(song) == before.at(song), !isChosen);
        }
        QCOMPARE(column(Title), strings({"Uno", "Tre", "Due"}));
        QCOMPARE(table()->selectionMode(), QAbstractItemView::SingleSelection);
        QCOMPARE(table()->selectionModel()->selectedRows().size(), 1);

        m_driver->answerBox(QMessageBox::Yes);
        m_driver->answerBox(QMessageBox::Ok);
        trigger("actionUndo");
        QVERIFY2(m_driver->boxes.constLast().endsWith(text(": %1 di %1").arg(songs.size())),
                 qPrintable(m_driver->boxes.constLast()));
        QVERIFY2(bytes() == before, "one undo takes back all of it");
    }

    void nothingIsChangedWithoutApply_data()
    {
        const Table<QString> row;
        row("Annulla", "exitPushButton");
        row("the frame", "");
    }
    void nothingIsChangedWithoutApply()
    {
        const auto [button] = cells<QString>();
        importThree();
        const QList<QByteArray> before = bytes();
        m_driver->expect<EditManyDialog>([button = button](EditManyDialog &dialog) {
            click(dialog, "allPushButton");
            fill(dialog, text("genre"), text("NEW"));
            if (button.isEmpty())
                dialog.close();
            else
                click(dialog, qPrintable(button));
        });
        trigger("actionEditMany");
        QCOMPARE(bytes(), before);
        QCOMPARE(statuses(), text("0 0 0"));
    }

    void onlySongsOnShowAreOffered()
    {
        importThree();
        table()->setRowHidden(1, true);
        QStringList offered;
        m_driver->expect<EditManyDialog>([&offered](EditManyDialog &dialog) {
            const auto *list = child<QTableWidget>(dialog, "songsTableWidget");
            for (int song = 0; song < list->rowCount(); ++song)
                offered.append(list->item(song, 0)->text() + QLatin1Char('|')
                               + list->item(song, 2)->text());
            click(dialog, "allPushButton");
            QCOMPARE(child<QLabel>(dialog, "countLabel")->text(), text("Song scelte: 2 di 2"));
            fill(dialog, text("genre"), text("NEW"));
            click(dialog, "applyPushButton");
        });
        trigger("actionEditMany");
        QCOMPARE(offered, strings({"Uno|c.mid", "Due|b.kar"}));
        QCOMPARE(column(Genre), strings({"NEW", "", "NEW"}));
        for (const int song : {0, 1, 2})
            QCOMPARE(read(m_songs.at(song)).contains("NEW"), song != 1);
    }

    void songsThatAreNotSavedAreOfferedAgain()
    {
        importThree();
        m_driver->expect<EditManyDialog>([this](EditManyDialog &dialog) {
            click(dialog, "allPushButton");
            fill(dialog, text("author"), text("NEW"));
            QFile::remove(m_songs.at(1));
            click(dialog, "applyPushButton");
        });
        m_driver->answerBox(QMessageBox::Ok);
        QString chosen;
        QString typed;
        m_driver->expect<EditManyDialog>([&](EditManyDialog &dialog) {
            chosen = numbers(dialog);
            typed = child<QLineEdit>(dialog, "authorLineEdit")->text();
            dialog.reject();
        });
        trigger("actionEditMany");
        QVERIFY(m_driver->boxes.constLast().contains(m_songs.at(1)));
        QCOMPARE(chosen, text("1"));
        QCOMPARE(typed, text("NEW"));
        QCOMPARE(column(Author), strings({"NEW", "", "NEW"}));
    }

    void theDialogSaysWhatTheSavesWouldDo()
    {
        using namespace SongBytes;
        m_songs = QStringList{
            addSong("a.mid", "Uno"),
            TestFiles::write(path("songs/b.mf3"), mfx(3, {"Old", "", "", "", "", 0, 0}, midi0()))};
        import(m_songs);
        QCOMPARE(model()->rowCount(), 2);
        const QString letter = QStringLiteral("\u00E0");
        const QString why = text("questo formato non può contenere la lettera \"%1\"").arg(letter);
        m_driver->expect<EditManyDialog>([&](EditManyDialog &dialog) {
            const auto *line = child<QLabel>(dialog, "noteLabel");
            choose(dialog, text("01"));
            click(dialog, "authorCheckBox");
            auto *author = child<QLineEdit>(dialog, "authorLineEdit");
            retype(author, letter);
            QVERIFY2(
                line->text().startsWith(text("Autore: in 1 song su 2 (MF3): ") + why
                                        + text("; in 1 song su 2 (MIDI): il lettore mostrerà: ")),
                qPrintable(line->text()));
            QCOMPARE(author->accessibleDescription(), line->text());
            retype(author, text("plain"));
            QCOMPARE(line->text(), QString());
            QCOMPARE(author->accessibleDescription(), text("Autore"));
            click(dialog, "genreCheckBox");
            auto *genre = child<QComboBox>(dialog, "genreComboBox");
            retype(genre->lineEdit(), letter);
            QVERIFY(line->text().startsWith(text("Genere Musicale: in 1 song su 2 (MF3): ")));
            choose(dialog, text("1"));
            QCOMPARE(line->text(), text("Genere Musicale: ") + why);
            click(dialog, "genreCheckBox");
            QCOMPARE(line->text(), QString());
            click(dialog, "artistCheckBox");
            retype(child<QComboBox>(dialog, "artistComboBox")->lineEdit(), letter);
            QCOMPARE(line->text(), text("Interprete: ") + why);
            click(dialog, "applyPushButton");
        });
        m_driver->answerBox(QMessageBox::Ok);
        m_driver->expect<EditManyDialog>([](EditManyDialog &dialog) {
            QVERIFY(child<QLabel>(dialog, "noteLabel")->text().startsWith(text("Interprete: ")));
            dialog.reject();
        });
        trigger("actionEditMany");
        QVERIFY(m_driver->lastBox.details.contains(why));
    }

    void anEmptyTableHasNothingToChange()
    {
        m_driver->answerBox(QMessageBox::Ok);
        trigger("actionEditMany");
        QCOMPARE(m_driver->boxes,
                 strings({"Information|Modifica più song|La tabella non mostra "
                          "nessuna song."}));
    }

    void applyNeedsASongAndAField()
    {
        EditManyDialog dialog({}, {});
        dialog.setSongs({{text("a"), {}, {}}, {text("b"), {}, {}}});
        const auto *apply = child<QWidget>(dialog, "applyPushButton");
        const auto *field = child<QWidget>(dialog, "genreComboBox");
        auto *tick = child<QCheckBox>(dialog, "genreCheckBox");
        QVERIFY(!apply->isEnabled() && !field->isEnabled());
        dialog.choose({1});
        QVERIFY(!apply->isEnabled());
        tick->click();
        QVERIFY(apply->isEnabled() && field->isEnabled());
        dialog.choose({});
        QVERIFY(!apply->isEnabled());
    }

    void tabGoesFromTopToBottom()
    {
        EditManyDialog dialog({}, {});
        dialog.setSongs({{text("a"), {}, {}}});
        dialog.choose({0});
        QVERIFY(activate(dialog));
        auto *list = child<QWidget>(dialog, "songsTableWidget");
        QVERIFY(list->hasFocus());
        QTest::keyClick(list, Qt::Key_Tab);
        QCOMPARE(dialog.focusWidget()->objectName(), text("allPushButton"));
        for (const char *key : {"genre", "artist", "author"})
            child<QCheckBox>(dialog, qPrintable(text(key) + text("CheckBox")))->setChecked(true);
        QCOMPARE(focusChain(list),
                 text("songsTableWidget allPushButton genreCheckBox genreComboBox "
                      "artistCheckBox artistComboBox authorCheckBox "
                      "authorLineEdit applyPushButton exitPushButton"));
        QCOMPARE(dialog.focusWidget()->objectName(), text("authorLineEdit"));
    }

    void controlsHaveKeysAndNamesOfTheirOwn_data()
    {
        const Table<QString> row;
        row("it", "it");
        row("en", "en");
    }
    void controlsHaveKeysAndNamesOfTheirOwn()
    {
        const auto [language] = cells<QString>();
        Appearance::applyStyleSheet(text(":/style/default.qss"));
        const auto plain = qScopeGuard([] { qApp->setStyleSheet(QString()); });
        QTranslator translator;
        Appearance::installLanguage(translator, language);
        EditManyDialog dialog({}, {});
        dialog.show();
        QVERIFY(dialog.minimumSizeHint().width() <= 640);
        QVERIFY(dialog.minimumSizeHint().height() <= 372); // 1280x800 at 200 %, below its title
        QStringList keys;
        QStringList names;
        for (const QAbstractButton *button : dialog.findChildren<QAbstractButton *>()) {
            if (button->focusPolicy() & Qt::TabFocus)
                keys.append(QKeySequence::mnemonic(button->text()).toString());
        }
        for (const QLabel *label : dialog.findChildren<QLabel *>()) {
            if (label->buddy())
                keys.append(QKeySequence::mnemonic(label->text()).toString());
        }
        for (QWidget *widget : dialog.findChildren<QWidget *>()) {
            if ((widget->focusPolicy() & Qt::TabFocus) && widget->isVisible()
                && !qobject_cast<QComboBox *>(widget->parentWidget()))
                names.append(
                    QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name));
        }
        QCOMPARE(keys.size(), 7);
        QCOMPARE(keys.removeDuplicates(), 0);
        QVERIFY(!keys.contains(QString()));
        QCOMPARE(names.size(), 10);
        QCOMPARE(names.removeDuplicates(), 0);
        QVERIFY(!names.contains(QString()));
    }

private:
    void importThree()
    {
        m_songs = threeSongs();
        import(m_songs);
        QCOMPARE(model()->rowCount(), 3);
    }
    QList<QByteArray> bytes() const
    {
        QList<QByteArray> all;
        for (const QString &song : m_songs)
            all.append(read(song));
        return all;
    }
    static void choose(const EditManyDialog &dialog, const QString &songs)
    {
        const auto *list = child<QTableWidget>(dialog, "songsTableWidget");
        Qt::KeyboardModifiers keys = Qt::NoModifier;
        for (const QChar song : songs) {
            QTest::mouseClick(list->viewport(), Qt::LeftButton, keys,
                              list->visualItemRect(list->item(song.digitValue(), 0)).center());
            keys = Qt::ControlModifier;
        }
    }
    static void fill(const EditManyDialog &dialog, const QString &field, const QString &value)
    {
        click(dialog, qPrintable(field + text("CheckBox")));
        if (auto *box = child<QComboBox>(dialog, qPrintable(field + text("ComboBox"))))
            box->setEditText(value);
        else
            child<QLineEdit>(dialog, qPrintable(field + text("LineEdit")))->setText(value);
    }
    static QString numbers(const EditManyDialog &dialog)
    {
        QString songs;
        for (const int song : dialog.chosen())
            songs += QString::number(song);
        return songs;
    }

    QStringList m_songs;
};

QTEST_MAIN(tst_WindowEditMany)
#include "tst_windoweditmany.moc"
