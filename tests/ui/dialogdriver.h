#pragma once

#include "tests/ui/forms.h"

#include <QFileDialog>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QProgressDialog>
#include <QWindow>
#include <QtTest>

#include <deque>
#include <functional>
#include <utility>

namespace tarvel4 {

/**
 * Plays the user while the test's own call is blocked in a dialog: takes its steps one after
 * another, each as soon as its dialog is on show. A dialog that nobody expected, or that does not
 * come, is closed after some seconds, so that no test hangs, and fails the test in the end.
 */
class DialogDriver : public QObject
{
public:
    DialogDriver() { wait(); }
    ~DialogDriver() override
    {
        for (const Step &step : m_steps)
            m_problems.append(text("never came: ") + step.dialog);
        QVERIFY2(m_problems.isEmpty(), qPrintable(m_problems.join(text("; "))));
    }
    Q_DISABLE_COPY(DialogDriver)

    /** Adds a step for the next modal dialog or menu of class \a Dialog. */
    template <class Dialog> void expect(std::function<void(Dialog &)> act)
    {
        m_steps.push_back({QString::fromLatin1(Dialog::staticMetaObject.className()),
                           [act = std::move(act)](QWidget *widget) {
                               auto *dialog = qobject_cast<Dialog *>(widget);
                               if (!dialog)
                                   return false;
                               act(*dialog);
                               return true;
                           }});
    }

    /** The step added last is taken before all others. */
    void lastGoesFirst()
    {
        m_steps.push_front(m_steps.back());
        m_steps.pop_back();
    }

    /** Clicks a button, by object name, in the next dialog of class \a Dialog; where it has no
     * name, closes the dialog by its frame. */
    template <class Dialog> void click(const QString &button)
    {
        if (button.isEmpty())
            closeFrame<Dialog>();
        else
            expect<Dialog>(
                [button](Dialog &dialog) { tarvel4::click(dialog, qPrintable(button)); });
    }
    template <class Dialog> void click(const char *button) { click<Dialog>(text(button)); }

    /** Closes the next dialog of class \a Dialog by its frame. */
    template <class Dialog> void closeFrame()
    {
        expect<Dialog>([](Dialog &dialog) { dialog.close(); });
    }

    /** Presses a standard button of the next message box, and keeps its texts. */
    void answerBox(QMessageBox::StandardButton button)
    {
        answerBox([button](const QMessageBox &box) { return box.button(button); });
    }

    /** The same with the button that has this text. */
    void answerBox(const QString &button)
    {
        answerBox([button](const QMessageBox &box) -> QAbstractButton * {
            for (QAbstractButton *found : box.buttons()) {
                if (found->text() == button)
                    return found;
            }
            return nullptr;
        });
    }

    /** Types the paths into the next file dialog and accepts it. */
    void chooseFiles(const QStringList &paths)
    {
        expect<QFileDialog>([paths](QFileDialog &dialog) {
            auto *edit = child<QLineEdit>(dialog, "fileNameEdit");
            const QSignalBlocker noCompletion(edit);
            edit->setText(paths.size() == 1
                              ? paths.constFirst()
                              : QLatin1Char('"') + paths.join(text("\" \"")) + QLatin1Char('"'));
            static_cast<QDialog &>(dialog).accept();
        });
    }

    /** Chooses an entry, by number, of the next menu; -1 closes it with Escape. */
    void chooseEntry(int entry)
    {
        expect<QMenu>([this, entry](QMenu &menu) {
            for (const QAction *action : menu.actions())
                menuTexts.append(action->text());
            if (entry < 0)
                QTest::keyClick(&menu, Qt::Key_Escape);
            else
                QTest::mouseClick(&menu, Qt::LeftButton, Qt::NoModifier,
                                  menu.actionGeometry(menu.actions().at(entry)).center());
        });
    }

    struct Box
    {
        QMessageBox::StandardButtons buttons;
        Qt::TextFormat format;
        QString details;
        QString addition;
    };

    QStringList boxes; ///< "ICON|TITLE|TEXT" of each message box that was answered
    Box lastBox{};
    QStringList menuTexts;

private:
    void answerBox(const std::function<QAbstractButton *(const QMessageBox &)> &find)
    {
        expect<QMessageBox>([this, find](QMessageBox &box) {
            boxes.append(QStringList({QVariant::fromValue(box.icon()).toString(), box.windowTitle(),
                                      box.text()})
                             .join(QLatin1Char('|')));
            lastBox = {box.standardButtons(), box.textFormat(), box.detailedText(),
                       box.informativeText()};
            const auto *addition = box.findChild<QLabel *>(text("qt_msgbox_informativelabel"));
            if (addition && addition->textFormat() != Qt::PlainText)
                m_problems.append(text("taken for HTML: ") + addition->text());
            if (QAbstractButton *found = find(box))
                QTest::mouseClick(found, Qt::LeftButton);
            else
                m_problems.append(text("no such button in ") + box.text());
        });
    }

    struct Step
    {
        QString dialog;
        std::function<bool(QWidget *)> act;
    };

    void wait() { QTimer::singleShot(2, this, &DialogDriver::look); }

    void look()
    {
        wait(); // first: what follows may open a dialog and return late
        QWidget *shown = QApplication::activePopupWidget();
        if (!shown)
            shown = QApplication::activeModalWidget();
        if (!shown || !shown->isVisible()) {
            m_patience.invalidate();
            return;
        }
        if (shown != m_last || !m_patience.isValid()) {
            m_last = shown;
            m_patience.start();
            return; // one round for the dialog to settle
        }
        if (!m_steps.empty() && takesClicks(shown)) {
            const Step step = m_steps.front();
            m_steps.pop_front();
            if (step.act(shown)) {
                m_patience.invalidate();
                return;
            }
            m_steps.push_front(step);
        }
        if (hasAdvanced(shown))
            m_patience.start();
        if (m_patience.hasExpired(8000))
            giveUp(shown);
    }

    /**
     * A real X server gives a new window its size and the focus some time after it was shown. One
     * that had the focus is not always given it back when a dialog above it closes.
     */
    static bool takesClicks(QWidget *shown)
    {
        if (shown->windowType() == Qt::Popup)
            return shown->windowHandle()->isExposed();
        constexpr char hadFocus[] = "hadFocus";
        if (shown->isActiveWindow() && shown->windowHandle()->isExposed())
            shown->setProperty(hadFocus, true);
        return shown->property(hadFocus).toBool();
    }

    /** True when a progress has gone on since the last look: a slow machine is not stuck. */
    bool hasAdvanced(QWidget *shown)
    {
        const auto *progress = qobject_cast<QProgressDialog *>(shown);
        return progress && std::exchange(m_lastValue, progress->value()) != progress->value();
    }

    void giveUp(QWidget *shown)
    {
        m_problems.append(text("stuck in ") + QString::fromLatin1(shown->metaObject()->className())
                          + QLatin1Char(' ') + shown->windowTitle());
        qWarning() << m_problems.constLast();
        m_patience.invalidate();
        if (auto *dialog = qobject_cast<QDialog *>(shown))
            dialog->done(0);
        else
            shown->close();
    }

    std::deque<Step> m_steps;
    QStringList m_problems;
    QPointer<QWidget> m_last;
    QElapsedTimer m_patience;
    int m_lastValue = -1;
};

} // namespace tarvel4
