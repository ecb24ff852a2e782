#include "db/usersongsreltablemodel.h"
#include "tests/storage/table.h"
#include "tests/ui/stage.h"
#include "tests/ui/windowtest.h"
#include "ui/appearance.h"
#include "ui/helpdialog.h"

#include <QMenu>
#include <QRegularExpression>
#include <QScrollBar>
#include <QShortcut>
#include <QTextBlock>
#include <QToolButton>
#include <QTranslator>
#include <QXmlStreamReader>

using namespace tarvel4;

namespace {

QString pageOf(const QString &language)
{
    return QString::fromUtf8(TestFiles::read(text(":/help/help_%1.html").arg(language)));
}

/** As it is written on a button: in one line, without its key and what else follows the words. */
QString plain(const QString &words)
{
    QString line = words.simplified().remove(QLatin1Char('&'));
    while (line.endsWith(QLatin1Char('.')) || line.endsWith(QLatin1Char(':')))
        line.chop(1);
    return line;
}

/** Every text of the program in a language. */
QSet<QString> textsIn(const QString &language)
{
    QFile file(text(TARVEL4_TRANSLATIONS "/tarvel4soft_%1.ts").arg(language));
    QSet<QString> texts;
    if (!file.open(QIODevice::ReadOnly))
        return texts;
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNextStartElement() && xml.name() == QLatin1String("translation"))
            texts.insert(plain(xml.readElementText(QXmlStreamReader::IncludeChildElements)));
    }
    return texts;
}

QVector<QTextImageFormat> picturesIn(const HelpView &view)
{
    QVector<QTextImageFormat> pictures;
    for (QTextBlock block = view.document()->begin(); block.isValid(); block = block.next()) {
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            if (part.fragment().charFormat().isImageFormat())
                pictures.append(part.fragment().charFormat().toImageFormat());
        }
    }
    return pictures;
}

} // namespace

/** The guide: what is in its pages, and how one finds the way in them. */
class tst_Help : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }
    void cleanup() { closeWindow(); }

    void wordsOnButtonsAreThoseOfTheWindow_data() { addLanguages(); }
    void wordsOnButtonsAreThoseOfTheWindow()
    {
        const auto [language] = cells<QString>();
        const QSet<QString> known = textsIn(language);
        const QRegularExpression bold(text("<b>([^<]*)</b>"));
        auto match = bold.globalMatch(pageOf(language));
        QVERIFY(match.hasNext());
        while (match.hasNext()) {
            QTextDocument words;
            words.setHtml(match.next().captured(1));
            QVERIFY2(known.contains(plain(words.toPlainText())), qPrintable(words.toPlainText()));
        }
    }

    void everyShortcutIsTold_data() { addLanguages(); }
    void everyShortcutIsTold()
    {
        const auto [language] = cells<QString>();
        settings().setValue(text("language"), language);
        QTranslator translator;
        Appearance::installLanguage(translator, language);
        openWindow();
        HelpDialog help(m_window.get());
        QString table; // its first column
        auto told = QRegularExpression(text("<tr><td>([^<]*)</td>")).globalMatch(pageOf(language));
        while (told.hasNext())
            table += told.next().captured(1) + QLatin1Char('\n');
        QStringList keys;
        for (const QWidget *window :
             {static_cast<QWidget *>(m_window.get()), static_cast<QWidget *>(&help)}) {
            for (const QAction *action : window->findChildren<QAction *>())
                keys.append(action->shortcut().toString(QKeySequence::NativeText));
            for (const QShortcut *shortcut : window->findChildren<QShortcut *>())
                keys.append(shortcut->key().toString(QKeySequence::NativeText));
            for (const QAbstractButton *button : window->findChildren<QAbstractButton *>())
                keys.append(button->shortcut().toString(QKeySequence::NativeText));
        }
        keys.removeDuplicates();
        keys.removeAll(QString());
        QVERIFY(keys.size() > 12);
        for (const QString &key : keys) {
            if (!key.startsWith(text("Alt+"))) // the underlined letters
                QVERIFY2(table.contains(QRegularExpression(
                             text("(^|[\\s(,])%1\\b").arg(QRegularExpression::escape(key)),
                             QRegularExpression::MultilineOption)),
                         qPrintable(key));
        }
    }

    void everyCommandIsTold_data() { addLanguages(); }
    /** The words of each entry of the menus, of each mark, and of what a message offers. */
    void everyCommandIsTold()
    {
        const auto [language] = cells<QString>();
        settings().setValue(text("language"), language);
        QTranslator translator;
        Appearance::installLanguage(translator, language);
        openWindowWithoutSummaries();
        import(threeSongs());
        QStringList words;
        for (const QMenu *menu : m_window->findChildren<QMenu *>()) {
            for (const QAction *action : menu->actions()) {
                if (action->isVisible() && !action->isCheckable() && !action->menu())
                    words += action->text();
            }
            words += menu->title();
        }
        markFailed(0);
        m_driver->expect<QMenu>([&words](QMenu &menu) {
            for (const QAction *action : menu.actions())
                words += action->menu() ? QString() : action->text();
            menu.close();
        });
        Q_EMIT table()->customContextMenuRequested(centreOf(0, Title));
        for (const auto mark :
             {UserSongsRelTableModel::MarkedUpdated, UserSongsRelTableModel::MarkedEdited,
              UserSongsRelTableModel::MarkedLeftAlone, UserSongsRelTableModel::MarkedFailed})
            words += UserSongsRelTableModel::markText(mark);
        words += QCoreApplication::translate("EjectOffer", "Espelli");
        QString page; // on which every piece in bold is one
        auto bold = QRegularExpression(text("<b>([^<]*)</b>")).globalMatch(pageOf(language));
        while (bold.hasNext()) {
            QTextDocument piece;
            piece.setHtml(bold.next().captured(1));
            page += QLatin1Char('|') + plain(piece.toPlainText()) + QLatin1Char('|');
        }
        words.removeAll(QString());
        QVERIFY(words.size() > 25);
        QStringList untold;
        for (const QString &word : qAsConst(words)) {
            if (!page.contains(QLatin1Char('|') + plain(word) + QLatin1Char('|')))
                untold += plain(word);
        }
        QCOMPARE(untold.join(text("; ")), QString());
    }

    void linksLeadSomewhere_data() { addLanguages(); }
    void linksLeadSomewhere()
    {
        const auto [language] = cells<QString>();
        const QString page = pageOf(language);
        auto link = QRegularExpression(text("href=\"#([^\"]*)\"")).globalMatch(page);
        int links = 0;
        for (; link.hasNext(); ++links) {
            const QString target = link.next().captured(1);
            QCOMPARE(page.count(text("<a name=\"%1\"></a>").arg(target)), 1);
        }
        const int chapters = static_cast<int>(page.count(text("<h2>")));
        QVERIFY(chapters > 10);
        QCOMPARE(links, chapters); // each is in the contents, once
    }

    void picturesFit_data()
    {
        const Table<QString, int> row;
        for (const QString &language : strings({"it", "en"})) {
            row(qPrintable(language + text(", wide")), language, 1000);
            row(qPrintable(language + text(", narrow")), language, 400);
            row(qPrintable(language + text(", made narrow")), language, -400);
        }
    }
    void picturesFit()
    {
        const auto [language, width] = cells<QString, int>();
        settings().setValue(text("language"), language);
        HelpDialog dialog;
        dialog.resize(width < 0 ? 1000 : width, 500);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        dialog.resize(qAbs(width), 500);
        QTRY_COMPARE(dialog.width(), qAbs(width));
        const auto *view = child<HelpView>(dialog, "textBrowser");
        const auto pictures = picturesIn(*view);
        QVERIFY(pictures.size() >= 4);
        for (const QTextImageFormat &picture : pictures) {
            const QVariant shown =
                view->document()->resource(QTextDocument::ImageResource, QUrl(picture.name()));
            const auto image = qvariant_cast<QImage>(shown);
            QVERIFY2(image.width() > 200, qPrintable(picture.name()));
            QVERIFY(image.width() <= view->viewport()->width() * image.devicePixelRatio());
            QVERIFY2(!picture.property(QTextFormat::ImageAltText).toString().isEmpty(),
                     "a reader tells what it shows");
        }
        QCOMPARE(view->horizontalScrollBar()->maximum(), 0);
    }

    /** Also when the desktop turns dark while it is read. */
    void picturesHaveTheSchemeOfThePage()
    {
        const QPalette before = QApplication::palette();
        Appearance::setScheme(Colours::Scheme::Light);
        HelpDialog dialog;
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        auto *view = child<HelpView>(dialog, "textBrowser");
        QVERIFY(view->findWords(text("Ctrl+Z"), HelpView::Direction::Next)); // far below the top
        const QRect selected = view->cursorRect();
        for (const auto scheme :
             {Colours::Scheme::Light, Colours::Scheme::Dark, Colours::Scheme::Light}) {
            Appearance::setScheme(scheme);
            QCoreApplication::processEvents();
            QCOMPARE(view->textCursor().selectedText(), text("Ctrl+Z")); // still in sight
            QVERIFY(qAbs(view->cursorRect().top() - selected.top()) <= selected.height());
            const QColor paper = Colours::palette(scheme).color(QPalette::Window);
            const auto pictures = picturesIn(*view);
            QVERIFY(pictures.size() >= 4);
            for (const QTextImageFormat &picture : pictures) {
                const QVariant shown =
                    view->document()->resource(QTextDocument::ImageResource, QUrl(picture.name()));
                const auto image = qvariant_cast<QImage>(shown);
                const QColor corner = image.pixelColor(4, image.height() - 4);
                QVERIFY2(qAbs(corner.lightness() - paper.lightness()) < 8,
                         qPrintable(picture.name()));
            }
            const QColor heading =
                view->document()->begin().begin().fragment().charFormat().foreground().color();
            QCOMPARE(heading, Colours::palette(scheme).color(QPalette::Link));
        }
        QApplication::setPalette(before);
    }

    void search_data()
    {
        const Table<QString, QString, QString> row;
        row("as it is typed", "backup", "", "backup");
        row("without regard to case", "BACKUP", "", "backup");
        row("without regard to accents", "perche non", "", "perché non");
        row("with accents that are not needed", "bàckup", "", "backup");
        row("with its hyphen", "k-varo", "", "k\u2011varo");
        row("across the blank behind a number", "251 caratteri", "", "251\u00A0caratteri");
        row("what is not there", "zzz", "", "");
        row("the next one, by Enter", "backup", "Return", "backup");
        row("the next one, by F3", "backup", "F3", "backup");
        row("the one before, by Shift+Enter", "backup", "Shift+Return", "backup");
        row("the one before, by Shift+F3", "backup", "Shift+F3", "backup");
    }
    void search()
    {
        const auto [words, key, expected] = cells<QString, QString, QString>();
        HelpDialog dialog;
        QVERIFY(activate(dialog));
        const auto *view = child<HelpView>(dialog, "textBrowser");
        auto *field = child<QLineEdit>(dialog, "searchLineEdit");
        QTest::keyClick(&dialog, Qt::Key_F, Qt::ControlModifier);
        QVERIFY(field->hasFocus());
        typeText(field, words);
        const int first = view->textCursor().selectionStart();
        const int places = countOf(*view, expected);
        if (!key.isEmpty()) {
            press(*field, key);
            QVERIFY(dialog.isVisible());
            const bool isNext = !key.startsWith(text("Shift"));
            QVERIFY(view->textCursor().selectionStart() > first); // round the end, if before
            for (int i = 1; i < places; ++i)
                press(*field, key);
            QCOMPARE(view->textCursor().selectionStart(), first); // all round
            QVERIFY(isNext || places > 2);
        }
        QCOMPARE(view->textCursor().selectedText().toLower(), expected);
        const QString told = child<QLabel>(dialog, "foundLabel")->text();
        QCOMPARE(told, expected.isEmpty() ? text("Non trovato") : QString());
        if (!expected.isEmpty())
            QVERIFY(view->viewport()->rect().contains(view->cursorRect().center()));
    }

    void noLineEndsWithinANameOrACount_data() { addLanguages(); }
    void noLineEndsWithinANameOrACount()
    {
        const auto [language] = cells<QString>();
        settings().setValue(text("language"), language);
        HelpDialog dialog;
        dialog.show();
        const auto *view = child<HelpView>(dialog, "textBrowser");
        const QRegularExpression broken(text("\\w-$|\\d $"));
        for (int width = 400; width < 900; width += 17) {
            dialog.resize(width, 500);
            QTRY_COMPARE(dialog.width(), width);
            const QTextDocument &page = *view->document();
            for (QTextBlock block = page.begin(); block.isValid(); block = block.next()) {
                for (int line = 0; line + 1 < block.layout()->lineCount(); ++line) {
                    const QTextLine shown = block.layout()->lineAt(line);
                    const QString words = block.text().mid(shown.textStart(), shown.textLength());
                    QVERIFY2(!words.contains(broken) || words.endsWith(text("tarvel4soft-")),
                             qPrintable(words));
                }
            }
        }
    }

    void escapeLeavesTheSearchFirst()
    {
        HelpDialog dialog;
        QVERIFY(activate(dialog));
        auto *view = child<HelpView>(dialog, "textBrowser");
        auto *field = child<QLineEdit>(dialog, "searchLineEdit");
        QVERIFY(view->hasFocus()); // arrows and Page Down read on at once
        const auto *next = child<QToolButton>(dialog, "nextToolButton");
        QCOMPARE(next->geometry().right(), view->geometry().right()); // nothing found fails yet
        field->setFocus();
        typeText(field, text("zzz"));
        QTest::keyClick(field, Qt::Key_Escape);
        QVERIFY(dialog.isVisible() && view->hasFocus());
        QCOMPARE(child<QLabel>(dialog, "foundLabel")->text(), QString());
        QTest::keyClick(view, Qt::Key_Escape);
        QVERIFY(!dialog.isVisible());
    }

    void wayBackFromALink()
    {
        HelpDialog dialog;
        dialog.resize(500, 300);
        QVERIFY(activate(dialog));
        auto *view = child<HelpView>(dialog, "textBrowser");
        view->setSource(QUrl(text("#trasferisci")));
        QVERIFY(view->verticalScrollBar()->value() > 0);
        QTest::keyClick(view, Qt::Key_Left, Qt::AltModifier);
        QCOMPARE(view->verticalScrollBar()->value(), 0);
    }

    void searchFollowsTheLanguage()
    {
        QTranslator translator;
        HelpDialog dialog;
        const auto *field = child<QLineEdit>(dialog, "searchLineEdit");
        QCOMPARE(field->placeholderText(), text("Cerca nell'aiuto (Ctrl+F)"));
        Appearance::installLanguage(translator, text("en"));
        QTRY_COMPARE(field->placeholderText(), text("Search the help (Ctrl+F)"));
        QCOMPARE(field->accessibleName(), text("Search the help"));
        QCOMPARE(child<QWidget>(dialog, "nextToolButton")->toolTip(), text("Next place (F3)"));
    }

protected:
    std::unique_ptr<SongPlayers> makePlayers() override
    {
        return std::make_unique<Stage::SilentPlayers>();
    }

private:
    static void addLanguages()
    {
        const Table<QString> row;
        row("it", "it");
        row("en", "en");
    }

    static void press(QWidget &widget, const QString &key)
    {
        const bool hasShift = key.startsWith(text("Shift+"));
        QTest::keyClick(&widget, key.endsWith(text("F3")) ? Qt::Key_F3 : Qt::Key_Return,
                        hasShift ? Qt::ShiftModifier : Qt::NoModifier);
    }

    static int countOf(const HelpView &view, const QString &words)
    {
        return static_cast<int>(view.toPlainText().count(words, Qt::CaseInsensitive));
    }
};

QTEST_MAIN(tst_Help)
#include "tst_help.moc"
