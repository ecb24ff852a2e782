#include "db/usersongsreltablemodel.h"
#include "tests/ui/drawing.h"
#include "tests/ui/examplewindows.h"
#include "tests/ui/textparts.h"
#include "tests/ui/windowtest.h"
#include "ui/appearance.h"
#include "ui/schemefollower.h"

#include <QCheckBox>
#include <QComboBox>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QStyleFactory>
#include <QStyleOptionButton>
#include <QToolButton>

using namespace tarvel4;

namespace {

constexpr double forText = 4.5;
constexpr double forMarks = 3; // and for what bounds a field or a button

bool isDark(Colours::Scheme scheme)
{
    return scheme == Colours::Scheme::Dark;
}

QRect indicatorOf(const QAbstractButton &button)
{
    QStyleOptionButton option;
    option.initFrom(&button);
    const bool isRadio = qobject_cast<const QRadioButton *>(&button);
    return button.style()->subElementRect(
        isRadio ? QStyle::SE_RadioButtonIndicator : QStyle::SE_CheckBoxIndicator, &option, &button);
}

/** Those have the edge of their box. */
bool isPartOfABox(const QWidget *widget)
{
    return qobject_cast<const QComboBox *>(widget->parentWidget())
        || qobject_cast<const QAbstractSpinBox *>(widget->parentWidget());
}

} // namespace

/** What is drawn can be read, on a light and on a dark desktop. */
class tst_Contrast : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_before = QApplication::palette();
        m_problems.clear();
        makeFolder();
    }
    void cleanup()
    {
        m_dialog.reset();
        closeWindow();
        qApp->setStyleSheet(QString());
        QApplication::setPalette(m_before);
        QApplication::setStyle(text("fusion"));
    }

    void schemeIsTheDesktops_data()
    {
        const Table<QRgb, QRgb, bool> row;
        row("black on white", 0xff000000u, 0xffffffffu, false);
        row("white on black", 0xffffffffu, 0xff000000u, true);
        row("black on grey", 0xff000000u, 0xff808080u, false);
        row("light grey on dark grey", 0xffd0d0d0u, 0xff404040u, true);
    }
    void schemeIsTheDesktops()
    {
        const auto [words, ground, dark] = cells<QRgb, QRgb, bool>();
        paintDesktop(ground, words);
        Appearance::followDesktop();
        QCOMPARE(isDark(Appearance::scheme()), dark);
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            for (int i = 0; i < QPalette::NColorRoles; ++i) {
                const auto role = static_cast<QPalette::ColorRole>(i);
                if (role == QPalette::NoRole)
                    continue;
                const QColor colour = QApplication::palette().color(group, role);
                QVERIFY2(colour != QColor(ground) || !dark, "the desktop's own colour is left");
                QCOMPARE(QApplication::palette("QMenu").color(group, role), colour);
            }
        }
    }

    void windows_data()
    {
        Table<QString, QString, QString>();
        const auto row = [](const QString &window, const char *desktop, const QString &style) {
            QTest::addRow("%s, on a %s desktop, %s", qPrintable(window), desktop, qPrintable(style))
                << window << text(desktop) << style;
        };
        QStringList names = ExampleWindows::makers.keys();
        names.append(text("window"));
        for (const QString &window : qAsConst(names)) {
            row(window, "light", text("Fusion"));
#ifdef Q_OS_WIN // where the program chooses its style
            row(window, "dark", text("Fusion"));
#else
            for (const QString &style : QStyleFactory::keys())
                row(window, "dark", style);
#endif
        }
    }
    void windows()
    {
        open();
        lookAtTexts();
        lookAtEdges();
        lookAtProgress();
        lookAtFocus();
        lookAtMarks();
        QVERIFY2(m_problems.isEmpty(), qPrintable(m_problems.join(text("; "))));
    }

    void desktopTurnsDarkAndLightAgain()
    {
        paintDesktop(0xffeff0f1, 0xff232629);
        const SchemeFollower follower;
        Appearance::applyStyleSheet(text(":/style/default.qss"));
        openWindowWithoutSummaries();
        import(threeSongs());
        m_shown = m_window.get();
        for (const bool dark : {false, true, false}) {
            paintDesktop(dark ? 0xff2a2e32 : 0xffeff0f1, dark ? 0xfffcfcfc : 0xff232629);
            const QColor paper =
                Colours::palette(dark ? Colours::Scheme::Dark : Colours::Scheme::Light)
                    .color(QPalette::Window);
            QTRY_COMPARE(QApplication::palette().color(QPalette::Window), paper);
            QCoreApplication::processEvents();
            QVERIFY(find<QLabel>("logoKvaroLabel")
                        ->styleSheet()
                        .contains(text(dark ? "kvaro-dark.png" : "kvaro.png")));
            const Drawing drawing(*m_window);
            QCOMPARE(QColor(drawing.at(m_window->rect().bottomLeft() + QPoint(4, -4))), paper);
            lookAtTexts();
            QVERIFY2(m_problems.isEmpty(), qPrintable(m_problems.join(text("; "))));
        }
    }

    void songs_data()
    {
        Table<QString, QString, QString>();
        for (const char *desktop : {"light", "dark"})
            QTest::addRow("a %s desktop", desktop)
                << text("window") << text(desktop) << text("fusion");
    }
    void songs()
    {
        open();
        QVERIFY(activate(*m_window));
        const QRect mark = table()->visualRect(model()->index(0, Type));
        const auto markArea = [&](const Drawing &drawing) {
            return drawing.areaOf(*table()->viewport(),
                                  mark.adjusted(2, 4, -mark.width() + 22, -4));
        };
        for (const auto status :
             {UserSongsRelTableModel::MarkedUpdated, UserSongsRelTableModel::MarkedEdited,
              UserSongsRelTableModel::MarkedLeftAlone, UserSongsRelTableModel::MarkedFailed}) {
            for (const bool isSelected : {false, true}) {
                table()->clearSelection();
                table()->setCurrentIndex({});
                if (isSelected)
                    table()->selectRow(0);
                qobject_cast<UserSongsRelTableModel *>(model())->setMark(0, status);
                const Drawing drawing(*m_window);
                const double contrast = drawing.contrastOnGround(markArea(drawing));
                QVERIFY2(contrast >= forMarks, QByteArray::number(contrast));
            }
        }
        find<QWidget>("selectDirToolButton")->setFocus();
        table()->setCurrentIndex(model()->index(0, Title));
        const Drawing without(*m_window);
        table()->setFocus();
        const QRect cell =
            without.areaOf(*table()->viewport(), table()->visualRect(table()->currentIndex()));
        const Drawing with(*m_window);
        const int changed = with.clearlyOther({cell.topLeft(), QSize(cell.width(), 2)}, without)
            + with.clearlyOther({cell.topLeft(), QSize(2, cell.height())}, without);
        QVERIFY2(changed >= cell.width() + cell.height() - 8, QByteArray::number(changed));
    }

private:
    /** As a desktop with a theme does it: menus and views have palettes of their own. */
    static void paintDesktop(QRgb ground, QRgb words)
    {
        const QColor ink(words);
        const QColor paper(ground);
        const QPalette desktop(ink, paper, paper.lighter(), paper.darker(), paper, ink, paper);
        QApplication::setPalette(desktop);
        for (const char *widget : {"QMenu", "QAbstractItemView", "QHeaderView", "QLabel"})
            QApplication::setPalette(desktop, widget);
    }

    void expect(double measured, double least, const QWidget *widget, const char *what)
    {
        if (measured < least)
            m_problems.append(text("%1 of %2 %3 has %4, not %5")
                                  .arg(text(what))
                                  .arg(QLatin1String(widget->metaObject()->className()))
                                  .arg(widget->objectName())
                                  .arg(measured)
                                  .arg(least));
    }

    void lookAtTexts()
    {
        const Drawing drawing(*m_shown);
        const auto texts = TextParts::of(*m_shown);
        QVERIFY(!texts.isEmpty());
        for (const auto &[widget, part] : texts) {
            const QRect area = drawing.areaOf(*widget, part);
            if (area.width() >= 4 && area.height() >= 8)
                expect(drawing.contrastOnGround(area), forText, widget, "a text");
        }
    }

    /** What can't be used now may have a faint edge. */
    void lookAtEdges()
    {
        const Drawing drawing(*m_shown);
        for (const QWidget *widget : m_shown->findChildren<QWidget *>()) {
            const bool isBounded = qobject_cast<const QPushButton *>(widget)
                || qobject_cast<const QLineEdit *>(widget)
                || qobject_cast<const QComboBox *>(widget)
                || qobject_cast<const QProgressBar *>(widget) || widget->inherits("QTextEdit")
                || widget->inherits("QPlainTextEdit") || widget->inherits("tarvel4::StepButton");
            if (isBounded && widget->isVisible() && widget->isEnabled() && !isPartOfABox(widget))
                expect(drawing.contrastOfEdge(drawing.areaOf(*widget)), forMarks, widget,
                       "the edge");
        }
    }

    void lookAtProgress()
    {
        for (auto *bar : m_shown->findChildren<QProgressBar *>()) {
            bar->setRange(0, 100);
            QRgb grounds[2] = {};
            for (const int value : {0, 100}) {
                bar->setValue(value);
                const Drawing drawing(*m_shown);
                const QRect area = drawing.areaOf(*bar, bar->rect().adjusted(6, 6, -6, -6));
                grounds[value / 100] = drawing.groundOf(area);
                expect(drawing.contrastOnGround(area), forText, bar, "the text");
            }
            expect(Drawing::contrast(grounds[0], grounds[1]), forMarks, bar, "the done part");
        }
    }

    void lookAtFocus()
    {
        QVERIFY(activate(*m_shown));
        for (QWidget *widget : m_shown->findChildren<QWidget *>()) {
            if (!(widget->focusPolicy() & Qt::TabFocus) || !widget->isVisible()
                || !widget->isEnabled() || widget->focusProxy() || isPartOfABox(widget))
                continue;
            if (m_shown->focusWidget())
                m_shown->focusWidget()->clearFocus();
            const Drawing without(*m_shown);
            widget->setFocus(Qt::TabFocusReason);
            const QRect area = without.areaOf(*widget).adjusted(-2, -2, 2, 2);
            expect(Drawing(*m_shown).clearlyOther(area, without), area.height() + 10, widget,
                   "the frame of the focus");
        }
    }

    /** Which box and which circle is chosen is seen, also where it can't be changed now. */
    void lookAtMarks()
    {
        for (auto *button : m_shown->findChildren<QAbstractButton *>()) {
            if (!qobject_cast<QCheckBox *>(button) && !qobject_cast<QRadioButton *>(button))
                continue;
            button->setAutoExclusive(false);
            for (const bool isEnabled : {true, false}) {
                button->setEnabled(isEnabled);
                button->setChecked(false);
                const Drawing without(*m_shown);
                const QRect mark = without.areaOf(*button, indicatorOf(*button));
                if (mark.isEmpty())
                    continue;
                expect(without.contrastOfEdge(mark), forMarks, button, "the edge of the mark");
                button->setChecked(true);
                expect(Drawing(*m_shown).clearlyOther(mark, without), 20, button, "the mark");
            }
        }
    }

    /** Opens the window of the row on its desktop. */
    void open()
    {
        const auto [window, desktop, style] = cells<QString, QString, QString>();
        QApplication::setStyle(style);
        if (desktop == text("dark"))
            paintDesktop(0xff2a2e32, 0xfffcfcfc);
        else
            paintDesktop(0xffeff0f1, 0xff232629);
        Appearance::followDesktop();
        QCOMPARE(isDark(Appearance::scheme()), desktop == text("dark"));
        Appearance::applyStyleSheet(text(":/style/default.qss"));
        if (window == text("window")) {
            openWindowWithoutSummaries();
            import(threeSongs());
            m_window->resize(1024, 700);
            m_shown = m_window.get();
        } else {
            m_dialog = ExampleWindows::makers[window]();
            m_shown = m_dialog.get();
            m_shown->show();
        }
        QVERIFY(QTest::qWaitForWindowExposed(m_shown));
    }

    QPalette m_before;
    std::unique_ptr<QWidget> m_dialog;
    QWidget *m_shown = nullptr;
    QStringList m_problems;
};

QTEST_MAIN(tst_Contrast)
#include "tst_contrast.moc"
