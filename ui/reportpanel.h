#pragma once

#include "library/jobreport.h"

#include <QWidget>

#include <memory>

namespace tarvel4 {

namespace Ui {
class ReportPanel;
}
class ReportModel;

/** Shows what a job did, song by song, below the table until the user closes it; leads from there
 * to a song's row, and saves the report as a text. */
class ReportPanel : public QWidget
{
    Q_OBJECT

public:
    explicit ReportPanel(QWidget *parent = nullptr);
    ~ReportPanel() override;

    void setReport(const JobReport &report);
    /** Says something below the list that needs no answer. */
    void setHint(const QString &text);
    /** Puts the focus on the list. */
    void focusList();

Q_SIGNALS:
    /** A song was clicked, or chosen by a key: then \a staysHere is false. */
    void songChosen(const QString &path, bool staysHere);
    void closed();

protected:
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void fitColumns();
    void setHeading(const QString &heading);
    void fitHeading();
    void choose(bool staysHere);
    void saveAsText();
    void closePanel();

    std::unique_ptr<Ui::ReportPanel> ui;
    ReportModel *m_model;
    bool m_hasReport = false;
};

} // namespace tarvel4
