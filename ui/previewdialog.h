#pragma once

#include "library/jobreport.h"

#include <QDialog>

#include <memory>

namespace tarvel4 {

namespace Ui {
class PreviewDialog;
}
class PreviewModel;

/** Shows song by song and field by field what a synchronisation would change. Accepted: go on. */
class PreviewDialog : public QDialog
{
    Q_OBJECT

public:
    enum class Next {
        Synchronise, ///< the go-ahead begins it
        Question ///< it was begun, and waits for an answer: there is only the way back
    };

    PreviewDialog(const JobReport &plan, Next next, QWidget *parent = nullptr);
    ~PreviewDialog() override;

protected:
    void showEvent(QShowEvent *event) override;

private:
    void fitColumns();

    std::unique_ptr<Ui::PreviewDialog> ui;
    PreviewModel *m_model;
};

} // namespace tarvel4
