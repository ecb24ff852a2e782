#include "tests/ui/examplewindows.h"
#include "tests/ui/windowtest.h"
#include "ui/appearance.h"
#include "ui/editmanydialog.h"
#include "ui/previewdialog.h"

#include <QAccessible>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QMenuBar>
#include <QProgressBar>

using namespace tarvel4;

namespace {

/** The keys with Alt of one menu or one form: each to be there, none to be there twice. */
class Keys
{
public:
    void add(const QString &text)
    {
        const QString key = QKeySequence::mnemonic(text).toString();
        if (key.isEmpty())
            m_problems.append(QLatin1String("none: ") + text);
        else if (m_texts.contains(key))
            m_problems.append(key + QLatin1String(": ") + m_texts.value(key)
                              + QLatin1String(" and ") + text);
        m_texts.insert(key, text);
    }
    void add(const QList<QAction *> &entries)
    {
        for (const QAction *action : entries) {
            if (!action->isSeparator() && action->isVisible())
                add(action->text());
        }
    }
    /** Those of the buttons and of the captions of fields; units beside a field need none. */
    void add(const QWidget &form)
    {
        for (const QAbstractButton *button : form.findChildren<QAbstractButton *>()) {
            const bool isOurs = !qobject_cast<QDialogButtonBox *>(button->parentWidget())
                && (button->focusPolicy() & Qt::TabFocus);
            if (isOurs && !button->text().isEmpty() && button->isVisible())
                add(button->text());
        }
        for (const QLabel *label : form.findChildren<QLabel *>()) {
            if (label->buddy() && label->objectName() != text("mmLabel")
                && label->objectName() != text("ssLabel"))
                add(label->text());
        }
    }
    int count() const { return static_cast<int>(m_texts.size()); }
    QString problems() const { return m_problems.join(QLatin1String("; ")); }

private:
    QMap<QString, QString> m_texts;
    QStringList m_problems;
};

/** Whether a person reaches a widget with Tab; not the parts that a control is made of. */
bool isControl(const QWidget &widget)
{
    return (widget.focusPolicy() & Qt::TabFocus) && !widget.focusProxy() && widget.isVisible()
        && !qobject_cast<const QComboBox *>(widget.parentWidget())
        && !widget.inherits("QHeaderView");
}

/** What a screen reader calls a control; a list is called by its caption, since its name is what is
 * chosen in it. */
QString nameOf(QWidget &widget)
{
    QAccessibleInterface *reader = QAccessible::queryAccessibleInterface(&widget);
    if (!qobject_cast<QComboBox *>(&widget))
        return reader->text(QAccessible::Name);
    const auto captions = reader->relations(QAccessible::Label);
    return captions.isEmpty() ? reader->text(QAccessible::Description)
                              : captions.constFirst().first->text(QAccessible::Name);
}

/** What is wrong with what a screen reader calls the controls of a form. */
QString problemsOfNames(const QWidget &form)
{
    QMap<QString, QString> controls;
    QStringList problems;
    for (QWidget *widget : form.findChildren<QWidget *>()) {
        if (!isControl(*widget) && !(qobject_cast<QProgressBar *>(widget) && widget->isVisible()))
            continue;
        const QString name = nameOf(*widget);
        const QString control =
            QString::fromLatin1(widget->metaObject()->className()) + widget->objectName();
        if (name.isEmpty())
            problems.append(QLatin1String("none: ") + control);
        else if (controls.contains(name))
            problems.append(name + QLatin1String(": ") + controls.value(name)
                            + QLatin1String(" and ") + control);
        controls.insert(name, control);
    }
    if (controls.isEmpty())
        problems.append(text("no controls"));
    return problems.join(QLatin1String("; "));
}

std::unique_ptr<QWidget> makeEditMany()
{
    return std::make_unique<EditManyDialog>(QStringList(), QStringList());
}

template <PreviewDialog::Next next> std::unique_ptr<QWidget> makePreview()
{
    return std::make_unique<PreviewDialog>(JobReport(JobReport::Job::Preview), next);
}

std::unique_ptr<QWidget> makeSummary()
{
    auto dialog = std::make_unique<ProceedDialog>();
    dialog->setProblems({text("x")});
    return dialog;
}

std::unique_ptr<QWidget> makeProgress()
{
    const ProgressTexts texts{text("x"), text("x"),
                              QCoreApplication::translate("ImportJob", "Interrompi")};
    return std::make_unique<ProgressDialog>(texts, 10, nullptr);
}

std::unique_ptr<QWidget> makeBackup()
{
    auto dialog = std::make_unique<BackupDialog>();
    dialog->setPreview([] {});
    return dialog;
}

} // namespace

/** Each menu and each form, in both languages: keys with Alt, names, and shortcuts that are told.
 */
class tst_KeysAndNames : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }
    void cleanup() { closeWindow(); }

    void everyMenuHasKeysThatDiffer_data() { addLanguages(); }
    void everyMenuHasKeysThatDiffer()
    {
        openIn(QTest::currentDataTag());
        for (const auto *menu : m_window->findChildren<QMenu *>()) {
            const bool isFilledLater = menu->actions().isEmpty(); // as that of a song's markers
            if (!menu->menuAction()->isVisible() || menu->objectName().isEmpty() || isFilledLater)
                continue;
            Keys keys;
            keys.add(menu->actions());
            QVERIFY2(keys.count() > 0, qPrintable(menu->objectName()));
            QCOMPARE(keys.problems(), QString());
        }
    }

    void windowHasKeysThatDiffer_data() { addLanguages(); }
    /** The menu bar, and the report with what can be done to it. */
    void windowHasKeysThatDiffer()
    {
        openIn(QTest::currentDataTag());
        find<QWidget>("reportPanel")->show();
        Keys keys;
        keys.add(find<QMenuBar>("menuBar")->actions());
        keys.add(*find<QWidget>("reportPanel"));
        QCOMPARE(keys.problems(), QString());
        QVERIFY(keys.count() >= 6);
    }

    void menuOfARowHasKeysThatDiffer_data() { addLanguages(); }
    void menuOfARowHasKeysThatDiffer()
    {
        openIn(QTest::currentDataTag());
        importOnly({addSong("a.mid", "A")});
        markFailed(0);
        Keys keys;
        m_driver->expect<QMenu>([&keys](QMenu &menu) {
            keys.add(menu.actions());
            menu.close();
        });
        Q_EMIT table()->customContextMenuRequested(centreOf(0, Title));
        QCOMPARE(keys.problems(), QString());
        QVERIFY(keys.count() >= 5);
    }

    void everyDialogHasKeysThatDiffer_data() { addDialogs(); }
    void everyDialogHasKeysThatDiffer()
    {
        const auto [name, language] = cells<QString, QString>();
        const auto made = open(name, language);
        Keys keys;
        keys.add(*made);
        QCOMPARE(keys.problems(), QString());
        QVERIFY(keys.count() > 0 || strings({"about", "help"}).contains(name));
    }

    void everyControlOfADialogHasANameOfItsOwn_data() { addDialogs(); }
    void everyControlOfADialogHasANameOfItsOwn()
    {
        const auto [name, language] = cells<QString, QString>();
        const auto made = open(name, language);
        QCOMPARE(problemsOfNames(*made), QString());
    }

    void everyControlOfTheWindowHasANameOfItsOwn_data() { addLanguages(); }
    void everyControlOfTheWindowHasANameOfItsOwn()
    {
        openIn(QTest::currentDataTag());
        find<QWidget>("reportPanel")->show();
        QCOMPARE(problemsOfNames(*m_window), QString());
    }

private:
    using Maker = std::unique_ptr<QWidget> (*)();

    static QMap<QString, Maker> dialogs()
    {
        QMap<QString, Maker> makers = ExampleWindows::makers;
        for (const char *notOurs : {"message", "files", "menu", "other"})
            makers.remove(text(notOurs));
        makers.insert(text("backup"), makeBackup);
        makers.insert(text("progress"), makeProgress);
        makers.insert(text("summary"), makeSummary);
        makers.insert(text("edit many"), makeEditMany);
        makers.insert(text("preview"), makePreview<PreviewDialog::Next::Synchronise>);
        makers.insert(text("preview over a question"), makePreview<PreviewDialog::Next::Question>);
        return makers;
    }
    static void addLanguages()
    {
        const Table<QString> row;
        row("it", "it");
        row("en", "en");
    }
    static void addDialogs()
    {
        Table<QString, QString>();
        for (const QString &name : dialogs().keys()) {
            for (const char *language : {"it", "en"})
                QTest::addRow("%s, %s", qPrintable(name), language) << name << text(language);
        }
    }

    std::unique_ptr<QWidget> open(const QString &name, const QString &language)
    {
        m_translator = std::make_unique<QTranslator>();
        Appearance::installLanguage(*m_translator, language);
        auto made = dialogs().value(name)();
        made->show();
        return made;
    }
    void openIn(const char *language)
    {
        openWindow();
        trigger(language == QByteArray("it") ? "actionItalian" : "actionEnglish");
    }

    std::unique_ptr<QTranslator> m_translator;
};

QTEST_MAIN(tst_KeysAndNames)
#include "tst_keysandnames.moc"
