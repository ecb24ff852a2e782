#pragma once

#include "ui/colours.h"
#include "ui/helpview.h"

#include <QDialog>

#include <memory>

namespace tarvel4 {

namespace Ui {
class HelpDialog;
}

/** Shows the user guide in the language of the settings, and searches in it. */
class HelpDialog : public QDialog
{
    Q_OBJECT

public:
    explicit HelpDialog(QWidget *parent = nullptr);
    ~HelpDialog() override;

protected:
    void changeEvent(QEvent *event) override;
    /** Keys in the search field: Enter goes on, Escape leaves the field, not the help. */
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void setUpSearch();
    void retranslate();
    void takeScheme();
    void loadPage();
    void startSearch();
    void search(HelpView::Direction direction, bool goesOn);

    std::unique_ptr<Ui::HelpDialog> ui;
    Colours::Scheme m_scheme = Colours::Scheme::Light; ///< of the page that is shown
};

} // namespace tarvel4
