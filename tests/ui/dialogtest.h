#pragma once

#include "tests/library/testfiles.h"
#include "tests/storage/table.h"
#include "tests/ui/dialogdriver.h"
#include "tests/ui/forms.h"

#include <QProgressBar>

#include <memory>

namespace tarvel4 {

/** A test of one dialog, which opens with fresh settings for each row. */
template <class Dialog> class DialogTest : public QObject
{
protected:
    template <class... Arguments> void open(Arguments &&...arguments)
    {
        m_dialog = std::make_unique<Dialog>(std::forward<Arguments>(arguments)...);
        m_dialog->show();
    }
    template <class Widget = QWidget> Widget *find(const char *name) const
    {
        return child<Widget>(*m_dialog, name);
    }
    QString textOf(const char *lineEdit) const { return find<QLineEdit>(lineEdit)->text(); }

    /** "MINIMUM VALUE MAXIMUM" of the progress. */
    QString progress() const
    {
        const auto *bar = find<QProgressBar>("progressBar");
        return text("%1 %2 %3").arg(bar->minimum()).arg(bar->value()).arg(bar->maximum());
    }

    /** Presses a button, answers as many boxes, and gives their texts. */
    QStringList press(const char *button, int boxes = 1,
                      QMessageBox::StandardButton answer = QMessageBox::Ok)
    {
        DialogDriver driver;
        for (int i = 0; i < boxes; ++i)
            driver.answerBox(answer);
        click(*m_dialog, button);
        m_lastBox = driver.lastBox;
        return driver.boxes;
    }

    std::unique_ptr<Dialog> m_dialog;
    DialogDriver::Box m_lastBox{};
};

} // namespace tarvel4
