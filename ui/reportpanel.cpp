#include "ui/reportpanel.h"

#include "indexer/outputtarget.h"
#include "storage/disk.h"
#include "storage/newfile.h"
#include "ui/causebox.h"
#include "ui/recentfolder.h"
#include "ui/reportmodel.h"
#include "ui/targetchooser.h"
#include "ui_reportpanel.h"

#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QShortcut>
#include <QStandardPaths>

#include <utility>

namespace tarvel4 {

ReportPanel::ReportPanel(QWidget *parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::ReportPanel>())
    , m_model(new ReportModel(this))
{
    ui->setupUi(this);
    ui->reportHintLabel->hide();
    QTableView *list = ui->reportTableView;
    list->setModel(m_model);
    list->verticalHeader()->hide();
    list->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    list->horizontalHeader()->setHighlightSections(false);
    list->horizontalHeader()->setStretchLastSection(true);
    list->setMinimumHeight(list->horizontalHeader()->sizeHint().height()
                           + list->verticalHeader()->defaultSectionSize());

    connect(list, &QTableView::clicked, this, [this] { choose(true); });
    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto *shortcut = new QShortcut(key, list, nullptr, nullptr, Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, this, [this] { choose(false); });
    }
    auto *escape =
        new QShortcut(Qt::Key_Escape, this, nullptr, nullptr, Qt::WidgetWithChildrenShortcut);
    connect(escape, &QShortcut::activated, this, &ReportPanel::closePanel);
    connect(ui->reportClosePushButton, &QPushButton::clicked, this, &ReportPanel::closePanel);
    connect(ui->reportSavePushButton, &QPushButton::clicked, this, &ReportPanel::saveAsText);
    connect(ui->reportFilterComboBox, qOverload<int>(&QComboBox::currentIndexChanged), this,
            [this] { m_model->setGroup(ui->reportFilterComboBox->chosen()); });
}

ReportPanel::~ReportPanel() = default;

void ReportPanel::setReport(const JobReport &report)
{
    m_hasReport = true;
    m_model->setReport(report);
    ui->reportFilterComboBox->offer(report);
    setHeading(report.heading());
    setHint({});
    fitColumns();
}

void ReportPanel::setHeading(const QString &heading)
{
    ui->reportHeadingLabel->setText(heading);
    fitHeading();
}

/** Where it would need more than two lines beside the buttons, it has lines of its own. The
 * splitter asks for the room of one only. */
void ReportPanel::fitHeading()
{
    constexpr int narrow = 640;
    QLabel *heading = ui->reportHeadingLabel;
    int beside = width();
    for (const QWidget *widget : {static_cast<QWidget *>(ui->reportFilterComboBox),
                                  static_cast<QWidget *>(ui->reportSavePushButton),
                                  static_cast<QWidget *>(ui->reportClosePushButton)})
        beside -= widget->sizeHint().width() + ui->reportHeadLayout->spacing();
    const int needed = heading->fontMetrics().horizontalAdvance(heading->text());
    QBoxLayout *home = ui->reportHeadLayout;
    QBoxLayout *other = ui->reportLayout;
    if (width() < narrow || needed > 2 * beside - narrow / 10) // no line is quite full
        std::swap(home, other);
    if (home->indexOf(heading) < 0) {
        other->removeWidget(heading);
        home->insertWidget(0, heading);
        ui->reportLayout->activate();
    }
    heading->setMinimumHeight(isVisible() ? heading->heightForWidth(heading->width()) : 0);
}

/** None takes more than a third; the last one has what is left. */
void ReportPanel::fitColumns()
{
    constexpr int narrow = 600; // also where it was never on show
    QTableView *list = ui->reportTableView;
    for (const int column : {ReportModel::Result, ReportModel::Song}) {
        list->resizeColumnToContents(column);
        list->setColumnWidth(column, qMin(list->columnWidth(column), qMax(width(), narrow) / 3));
    }
}

void ReportPanel::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    fitHeading();
}

void ReportPanel::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    fitHeading();
}

void ReportPanel::setHint(const QString &text)
{
    ui->reportHintLabel->setText(text);
    ui->reportHintLabel->setVisible(!text.isEmpty());
}

void ReportPanel::focusList()
{
    QTableView *list = ui->reportTableView;
    list->setFocus(Qt::ShortcutFocusReason);
    if (!list->currentIndex().isValid() && m_model->rowCount() > 0)
        list->setCurrentIndex(m_model->index(0, 0));
}

void ReportPanel::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::LanguageChange)
        return;
    ui->retranslateUi(this);
    if (!m_hasReport)
        return;
    setHeading(m_model->report().heading());
    ui->reportFilterComboBox->retranslate(m_model->report());
    setHint({});
    m_model->retranslate();
    fitColumns();
}

void ReportPanel::choose(bool staysHere)
{
    setHint({});
    const QString path = m_model->pathOf(ui->reportTableView->currentIndex());
    if (!path.isEmpty())
        Q_EMIT songChosen(path, staysHere);
}

void ReportPanel::saveAsText()
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const RecentFolder recent(QLatin1String("report"));
    const QDir folder = recent.folder(QFileInfo(documents).isDir() ? documents : QDir::homePath());
    const QString path = chooseTarget(window(), tr("Salva il resoconto come testo"),
                                      folder.filePath(tr("resoconto") + QStringLiteral(".txt")),
                                      tr("Testo (*.txt)"));
    if (path.isEmpty())
        return;
    recent.setFolder(QFileInfo(path).path());
    Outcome outcome = OutputTarget::check(path);
    if (outcome)
        outcome = NewFile::write(Disk::real(), path, m_model->report().asText().toUtf8());
    if (outcome)
        setHint(tr("Salvato in %1").arg(QDir::toNativeSeparators(path)));
    else
        showWithCause(*window(), QMessageBox::Critical, tr("Salva il resoconto come testo"),
                      tr("Il resoconto non è stato salvato."), outcome);
}

void ReportPanel::closePanel()
{
    hide();
    Q_EMIT closed();
}

} // namespace tarvel4
