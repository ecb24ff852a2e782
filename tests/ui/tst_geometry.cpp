#include "tests/ui/examplewindows.h"
#include "tests/ui/stage.h"
#include "tests/ui/windowtest.h"
#include "ui/appearance.h"
#include "ui/editmanydialog.h"
#include "ui/elidedlabel.h"
#include "ui/previewdialog.h"
#include "ui/reportpanel.h"
#include "ui/stepbutton.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTranslator>

using namespace tarvel4;

namespace {

constexpr QSize smallScreen(512, 350); // 1024x700 at 200 %

std::unique_ptr<QWidget> makeMany()
{
    auto dialog = std::make_unique<EditManyDialog>(strings({"POP"}), strings({"Modugno"}));
    dialog->setSongs(QVector<EditManyDialog::Song>(3, {text("a"), text("b"), text("c.mid")}));
    dialog->choose({1});
    return dialog;
}

std::unique_ptr<QWidget> makePreview()
{
    JobReport plan(JobReport::Job::Preview);
    for (const SongResult result :
         {SongResult::Updated, SongResult::NotFound, SongResult::Refused}) {
        SongOutcome song;
        song.path = text("/songs/Santa Lucia %1.mid").arg(static_cast<int>(result));
        song.result = result;
        song.changes = {{text("title"), text("Santa Lucia"), text("Santa Lucia luntana")}};
        plan.add(song);
    }
    plan.finish({});
    return std::make_unique<PreviewDialog>(plan, PreviewDialog::Next::Synchronise);
}

/** What the program shows of its own. */
QMap<QString, std::unique_ptr<QWidget> (*)()> dialogs()
{
    auto all = ExampleWindows::makers;
    for (const char *ofQt : {"menu", "other", "files"})
        all.remove(text(ofQt));
    all.insert(text("many"), makeMany);
    all.insert(text("preview"), makePreview);
    return all;
}

QString nameOf(const QWidget &widget)
{
    return QLatin1String(widget.metaObject()->className()) + QLatin1Char(' ') + widget.objectName();
}

/** Lies over another one on purpose. */
bool isOverlay(const QWidget *widget)
{
    return qobject_cast<const StepCaption *>(widget) || widget->inherits("QSplitterHandle")
        || widget->inherits("QSizeGrip") || widget->objectName() == text("announcement")
        || widget->objectName() == text("emptyTableLabel");
}

/** Its children are where Qt has put them: in a list they are scrolled. */
bool isLaidOutByQt(const QWidget *widget)
{
    return qobject_cast<const QAbstractScrollArea *>(widget)
        || qobject_cast<const QAbstractScrollArea *>(widget->parentWidget())
        || qobject_cast<const QComboBox *>(widget) || qobject_cast<const QLineEdit *>(widget)
        || qobject_cast<const QAbstractSpinBox *>(widget);
}

/** What of a window is cut, hidden or covered. */
class Look
{
public:
    static QString at(QWidget &window)
    {
        Look look;
        look.parts(window);
        for (QWidget *widget : window.findChildren<QWidget *>()) {
            if (!widget->isVisible())
                continue;
            look.parts(*widget);
            look.words(*widget);
        }
        return look.m_faults.join(text("; "));
    }

private:
    void fault(const QWidget &widget, const QString &what)
    {
        m_faults.append(nameOf(widget) + QLatin1Char(' ') + what);
    }

    /** Inside their parent, and beside each other. */
    void parts(const QWidget &parent)
    {
        if (isLaidOutByQt(&parent))
            return;
        QVector<const QWidget *> seen;
        for (const QWidget *part :
             parent.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
            if (!part->isVisible() || part->isWindow() || part->size().isEmpty())
                continue;
            if (!parent.rect().contains(part->geometry()))
                fault(*part, text("sticks out of ") + nameOf(parent));
            if (isOverlay(part))
                continue;
            for (const QWidget *other : qAsConst(seen)) {
                if (part->geometry().intersects(other->geometry()))
                    fault(*part, text("covers ") + nameOf(*other));
            }
            seen.append(part);
        }
    }

    void words(QWidget &widget)
    {
        if (const auto *header = qobject_cast<const QHeaderView *>(&widget))
            sections(*header);
        else if (const auto *label = qobject_cast<const QLabel *>(&widget))
            line(*label);
        else if (const auto *field = qobject_cast<const QLineEdit *>(&widget))
            room(widget, field->fontMetrics().horizontalAdvance(field->placeholderText()),
                 field->width());
        else if (qobject_cast<const QPushButton *>(&widget)
                 || qobject_cast<const QCheckBox *>(&widget)
                 || qobject_cast<const QRadioButton *>(&widget))
            room(widget, widget.sizeHint(), widget.size());
    }

    void room(const QWidget &widget, int needed, int had)
    {
        if (had < needed)
            fault(widget, text("has %1 of %2").arg(had).arg(needed));
    }
    void room(const QWidget &widget, const QSize &needed, const QSize &had)
    {
        room(widget, needed.width(), had.width());
        room(widget, needed.height(), had.height());
    }

    void line(const QLabel &label)
    {
        if (label.text().isEmpty() || qobject_cast<const StepCaption *>(&label)
            || label.objectName() == text("emptyTableLabel"))
            return;
        if (label.wordWrap())
            room(label, label.heightForWidth(label.width()), label.height());
        else if (qobject_cast<const ElidedLabel *>(&label))
            room(label, label.fontMetrics().height(), label.height());
        else
            room(label, label.sizeHint(), label.size());
        if (label.buddy() && label.text().contains(QLatin1Char('&')) && !label.wordWrap())
            room(label, drawnWidth(label), label.contentsRect().width());
    }

    /** A letter that is underlined is drawn apart from those beside it, without kerning. */
    static int drawnWidth(const QLabel &label)
    {
        const auto mark = label.text().indexOf(QLatin1Char('&'));
        int width = 0;
        for (const QString &part :
             {label.text().left(mark), label.text().mid(mark + 1, 1), label.text().mid(mark + 2)})
            width += label.fontMetrics().horizontalAdvance(part);
        return width;
    }

    void sections(const QHeaderView &header)
    {
        if (header.orientation() != Qt::Horizontal)
            return;
        for (int section = 0; section < header.count(); ++section) {
            if (!header.isSectionHidden(section)
                && header.sectionSize(section) < header.sectionSizeHint(section))
                fault(header, text("cuts section %1").arg(section));
        }
    }

    QStringList m_faults;
};

} // namespace

/** In each window and each language nothing is cut, hidden or covered. */
class tst_Geometry : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { Appearance::applyStyleSheet(text(":/style/default.qss")); }
    void init() { makeFolder(); }
    void cleanup() { closeWindow(); }

    void dialog_data()
    {
        const Table<QString, QString, bool> row;
        for (const QString &language : strings({"it", "en"})) {
            const QStringList names = dialogs().keys();
            for (const QString &name : names) {
                for (const bool isSmall : {false, true})
                    row(qPrintable(text("%1, %2, %3")
                                       .arg(name, language,
                                            text(isSmall ? "on a small screen" : "as it opens"))),
                        name, language, isSmall);
            }
        }
    }
    void dialog()
    {
        const auto [name, language, isSmall] = cells<QString, QString, bool>();
        speak(language);
        const auto dialog = dialogs().value(name)();
        dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
        if (isSmall)
            resize(*dialog, dialog->size().boundedTo(smallScreen));
        const QString faults = Look::at(*dialog);
        QVERIFY2(faults.isEmpty(), qPrintable(faults));
        for (const QScrollBar *bar : dialog->findChildren<QScrollBar *>()) {
            const bool isNeedless = !isSmall && bar->orientation() == Qt::Horizontal;
            QVERIFY2(!isNeedless || !bar->isVisible(), qPrintable(nameOf(*bar->parentWidget())));
        }
        for (const QPlainTextEdit *page : dialog->findChildren<QPlainTextEdit *>())
            QVERIFY(!page->verticalScrollBar()->isVisible()); // nothing is told yet
    }

    void editorHasItsFieldsBelowEachOther_data() { languages(); }
    void editorHasItsFieldsBelowEachOther()
    {
        const auto [language] = cells<QString>();
        speak(language);
        DataEditDialog dialog;
        SongInfo song;
        song.filename = text("/home/a/a.mid");
        song.format = text("MIDI");
        dialog.setSong(song);
        dialog.setKeys(strings({"Bb", "F#-"}));
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        const auto left = [&dialog](const char *name) {
            return child<QWidget>(dialog, name)->mapTo(&dialog, QPoint()).x();
        };
        for (const char *below : {"radioButtonTitle1", "authorLineEdit", "lenMmLineEdit"})
            QCOMPARE(left(below), left("titleLineEdit"));
    }

    void previewHasItsColumnsInSight_data() { languages(); }
    void previewHasItsColumnsInSight()
    {
        const auto [language] = cells<QString>();
        speak(language);
        const auto dialog = makePreview();
        dialog->resize(smallScreen);
        dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
        QCOMPARE(Look::at(*dialog), QString());
        QVERIFY(
            !child<QTableView>(*dialog, "previewTableView")->horizontalScrollBar()->isVisible());
    }

    void window_data()
    {
        const Table<QString, QSize> row;
        for (const QString &language : strings({"it", "en"})) {
            for (const QSize &size : {QSize(1920, 1080), QSize(1024, 700), QSize(960, 540),
                                      QSize(720, 500), smallScreen})
                row(qPrintable(
                        text("%1, %2x%3").arg(language).arg(size.width()).arg(size.height())),
                    language, size);
        }
    }
    /** As it opens, with songs, and with a report of several causes. */
    void window()
    {
        const auto [language, size] = cells<QString, QSize>();
        speak(language);
        openWindowWithoutSummaries();
        resize(*m_window, size);
        resize(*m_window, size); // a low window has no pictures, but needs their room until then
        QCOMPARE(Look::at(*m_window), QString());
        using namespace SongBytes;
        import(threeSongs() << TestFiles::write(
                   path("songs/d.mid"),
                   midi0(meta(3, "Con marker") + meta(2, "(c) K-VARO") + marker(1, "Intro"))));
        QCOMPARE(Look::at(*m_window), QString());
        table()->setCurrentIndex(model()->index(3, Title));
        trigger("actionListen");
        QVERIFY(find<QWidget>("listenMarksButton")->isVisible());
        QCOMPARE(Look::at(*m_window), QString());
        QVERIFY(m_window->minimumSizeHint().width() <= size.width());
        m_driver->click<BackupDialog>("exitPushButton");
        QFile::remove(path("songs/c.mid"));
        press("updateDataToolButton");
        QCoreApplication::processEvents();
        QVERIFY(find<QWidget>("reportPanel")->isVisible());
        QCOMPARE(Look::at(*m_window), QString());
        JobReport report(JobReport::Job::Synchronise); // with a longer heading
        for (const auto group : {JobReport::Group::Unreadable, JobReport::Group::NotFound,
                                 JobReport::Group::Refused, JobReport::Group::Updated})
            report.add(SongOutcome(), group);
        find<ReportPanel>("reportPanel")->setReport(report);
        QTRY_COMPARE(Look::at(*m_window), QString());
        QVERIFY2(m_window->height() <= size.height(), QByteArray::number(m_window->height()));
    }

    void languageChanges()
    {
        speak(text("en"));
        openWindowWithoutSummaries();
        resize(*m_window, {1024, 700});
        import(threeSongs());
        for (const char *language : {"actionItalian", "actionEnglish"}) {
            trigger(language);
            QTRY_COMPARE(Look::at(*m_window), QString());
        }
    }

protected:
    std::unique_ptr<SongPlayers> makePlayers() override
    {
        return std::make_unique<Stage::SilentPlayers>();
    }

private:
    static void languages()
    {
        const Table<QString> row;
        for (const QString &language : strings({"it", "en"}))
            row(qPrintable(language), language);
    }

    void speak(const QString &language)
    {
        settings().setValue(text("language"), language);
        Appearance::installLanguage(m_translator, language);
    }

    static void resize(QWidget &window, const QSize &size)
    {
        window.resize(size);
        QTest::qWait(20);
        QCoreApplication::processEvents();
    }

    QTranslator m_translator;
};

QTEST_MAIN(tst_Geometry)
#include "tst_geometry.moc"
