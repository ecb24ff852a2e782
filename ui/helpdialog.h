#pragma once

#include <QDialog>

#include <memory>

namespace tarvel4 {

namespace Ui {
class HelpDialog;
}

/** Shows the user guide in the language of the settings. */
class HelpDialog : public QDialog
{
    Q_OBJECT

public:
    explicit HelpDialog(QWidget *parent = nullptr);
    ~HelpDialog() override;

protected:
    void changeEvent(QEvent *event) override;

private:
    void loadPage();

    std::unique_ptr<Ui::HelpDialog> ui;
};

} // namespace tarvel4
