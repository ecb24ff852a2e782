#pragma once

#include "library/progress.h"
#include "ui/readerpace.h"

#include <QProgressDialog>

namespace tarvel4 {

/**
 * The progress of one workflow. It is on show from its first moment until the workflow lets it go,
 * so that nothing else of the window can be used meanwhile: cancelling, by whatever road, is kept
 * for the workflow to see and closes nothing.
 */
class ProgressDialog : public QProgressDialog
{
    Q_OBJECT

public:
    ProgressDialog(const ProgressTexts &texts, int maximum, QWidget *parent);

    bool cancelled() const { return m_cancelled; }

    /** Whether to show a step: the last one always, each one unless a screen reader listens. */
    bool isDue(int value) { return value >= maximum() || m_pace.isDue(); }

    void reject() override;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    QPushButton *m_cancelButton;
    ReaderPace m_pace;
    bool m_cancelled = false;
};

} // namespace tarvel4
