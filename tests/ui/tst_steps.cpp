#include "tests/ui/drawing.h"
#include "tests/ui/windowtest.h"
#include "ui/appearance.h"
#include "ui/stepbutton.h"

#include <QSignalSpy>
#include <QWindow>

using namespace tarvel4;

namespace {

struct Step
{
    const char *button;
    const char *words; ///< the widget with the words
};

constexpr Step steps[] = {{"selectDirToolButton", "selectDirToolButton"},
                          {"updateDataToolButton", "label_2"},
                          {"transferFilesToolButton", "label_3"}};

} // namespace

/** The three steps of the window: what they show, and what of them can be pressed. */
class tst_Steps : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        makeFolder();
        Appearance::applyStyleSheet(text(":/style/default.qss"));
        openWindow();
    }
    void cleanup()
    {
        closeWindow();
        qApp->setStyleSheet(QString());
    }

    void words_data()
    {
        Table<QByteArray, QSize, bool>();
        for (const char *language : {"actionItalian", "actionEnglish"}) {
            const auto row = [language](int width, int height, bool hasOwnBreaks) {
                QTest::addRow("%s at %dx%d", language, width, height)
                    << QByteArray(language) << QSize(width, height) << hasOwnBreaks;
            };
            row(1920, 1080, true);
            row(1264, 700, true);
            row(1024, 700, true);
            row(960, 540, true);
            row(640, 400, false);
            row(512, 350, false);
        }
    }
    /** One size, nothing is cut, and no line is broken where the text has a break of its own. */
    void words()
    {
        const auto [language, size, hasOwnBreaks] = cells<QByteArray, QSize, bool>();
        trigger(language.constData());
        m_window->resize(size);
        QCoreApplication::processEvents();
        QCOMPARE(m_window->size(), size); // no widget asks for more

        const qreal points = find<StepButton>("selectDirToolButton")->wordsFont().pointSizeF();
        QVERIFY2(points >= 8 && points <= 12, QByteArray::number(points));
        for (const Step &step : steps) {
            const auto *button = find<StepButton>(step.button);
            QString shown = find<QWidget>(step.words)->property("text").toString();
            QCOMPARE(button->wordsFont().pointSizeF(), points);
            const QFontMetrics metrics(button->wordsFont());
            const QRect room(QPoint(), button->wordsRect().size());
            QVERIFY(button->rect().contains(button->wordsRect()));
            if (hasOwnBreaks && shown.contains(QLatin1Char('\n'))) {
                QVERIFY2(metrics.size(0, shown).width() <= room.width(), step.button);
            } else {
                shown.replace(QLatin1Char('\n'), QLatin1Char(' '));
                const QRect needed = metrics.boundingRect(room, Qt::TextWordWrap, shown);
                QVERIFY2(room.contains(needed),
                         qPrintable(text("%1 has %2x%3 for %4x%5")
                                        .arg(text(step.button))
                                        .arg(room.width())
                                        .arg(room.height())
                                        .arg(needed.width())
                                        .arg(needed.height())));
            }
        }
    }

    void wholeStepIsOneTarget_data()
    {
        const Table<QByteArray, QByteArray> row;
        row("the second", "updateDataToolButton", "label_2");
        row("the third", "transferFilesToolButton", "label_3");
    }
    void wholeStepIsOneTarget()
    {
        const auto [name, caption] = cells<QByteArray, QByteArray>();
        auto *button = find<StepButton>(name.constData());
        const auto *words = find<QLabel>(caption.constData());
        QVERIFY(button->rect() == button->parentWidget()->rect()); // the frame has no rest
        QObject::disconnect(button, nullptr, m_window.get(), nullptr);
        const QSignalSpy clicks(button, &QAbstractButton::clicked);
        const QPoint onWords = button->mapTo(
            m_window.get(), QRect(button->wordsRect().topLeft(), QSize(20, 20)).center());
        QVERIFY(words->rect().contains(words->mapFrom(m_window.get(), onWords)));
        QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, Qt::NoModifier, onWords);
        QCOMPARE(clicks.count(), 0); // disabled at start
        button->setEnabled(true);
        QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, Qt::NoModifier, onWords);
        QCOMPARE(clicks.count(), 1);
    }

    void disabledStepLooksDisabled_data() { wholeStepIsOneTarget_data(); }
    void disabledStepLooksDisabled()
    {
        const auto [name, caption] = cells<QByteArray, QByteArray>();
        auto *button = find<StepButton>(name.constData());
        const auto isBright = [&](const Drawing &drawing) {
            return drawing.contrastOnGround(
                drawing.areaOf(*button, button->wordsRect().adjusted(0, 0, -12, 0)));
        };
        const Drawing off(*m_window);
        button->setEnabled(true);
        const Drawing on(*m_window);
        const QRect area = on.areaOf(*button);
        QVERIFY(on.groundOf(area) != off.groundOf(area));
        QVERIFY2(isBright(on) > 1.5 * isBright(off), "the words");
        QVERIFY(find<QWidget>(caption.constData())->isEnabled());
        button->setEnabled(false);
        QVERIFY(!find<QWidget>(caption.constData())->isEnabled());
    }

    void smallWindowLeavesItsRoomToTheSongs_data()
    {
        const Table<int, bool> row;
        row("a small one", 400, false);
        row("a usual one", 700, true);
    }
    void smallWindowLeavesItsRoomToTheSongs()
    {
        const auto [height, isShown] = cells<int, bool>();
        m_window->resize(1024, height);
        for (const char *picture : {"logoLabel", "frame", "logoKvaroLabel"})
            QTRY_COMPARE(find<QWidget>(picture)->isVisible(), isShown);
    }
};

QTEST_MAIN(tst_Steps)
#include "tst_steps.moc"
