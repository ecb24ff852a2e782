#include "ui/progressdialog.h"

#include <QCloseEvent>
#include <QProgressBar>
#include <QPushButton>

namespace tarvel4 {

ProgressDialog::ProgressDialog(const ProgressTexts &texts, int maximum, QWidget *parent)
    : QProgressDialog(texts.label, QString(), 0, maximum, parent)
    , m_cancelButton(new QPushButton(texts.cancel))
{
    setCancelButton(m_cancelButton);
    setWindowTitle(texts.title);
    setWindowModality(Qt::WindowModal);
    setAutoClose(false);
    setAutoReset(false);
    setMinimumDuration(0);
    findChild<QProgressBar *>()->setAccessibleName(tr("Avanzamento"));
    setMinimumWidth(fontMetrics().averageCharWidth() * 52);

    disconnect(this, SIGNAL(canceled()), this, SLOT(cancel()));
    connect(this, &QProgressDialog::canceled, this, [this] {
        m_cancelled = true;
        m_cancelButton->setEnabled(false);
    });

    setValue(0);
    show();
}

void ProgressDialog::reject()
{
    Q_EMIT canceled();
}

void ProgressDialog::closeEvent(QCloseEvent *event)
{
    Q_EMIT canceled();
    event->ignore();
}

} // namespace tarvel4
