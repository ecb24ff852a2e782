#include "ui/previewdialog.h"

#include "ui/previewmodel.h"
#include "ui_previewdialog.h"

#include <QHeaderView>
#include <QScreen>
#include <QShowEvent>

namespace tarvel4 {

PreviewDialog::PreviewDialog(const JobReport &plan, Next next, QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::PreviewDialog>())
    , m_model(new PreviewModel(plan, this))
{
    ui->setupUi(this);
    ui->previewHeadingLabel->setText(plan.heading());
    ui->previewFilterComboBox->offer(plan);
    QTableView *list = ui->previewTableView;
    list->setModel(m_model);
    list->verticalHeader()->hide();
    list->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    list->horizontalHeader()->setHighlightSections(false);
    list->horizontalHeader()->setStretchLastSection(true);
    list->setFocus();
    if (m_model->rowCount() > 0)
        list->setCurrentIndex(m_model->index(0, 0));

    if (next == Next::Question) {
        ui->previewGoPushButton->setText(tr("Torna alla domanda"));
        ui->previewClosePushButton->hide();
    }
    resize(QSize(960, 600).boundedTo(screen()->availableSize()));
    connect(ui->previewGoPushButton, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui->previewClosePushButton, &QPushButton::clicked, this, &QDialog::reject);
    connect(ui->previewFilterComboBox, qOverload<int>(&QComboBox::currentIndexChanged), this,
            [this] { m_model->setGroup(ui->previewFilterComboBox->chosen()); });
}

PreviewDialog::~PreviewDialog() = default;

void PreviewDialog::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (!event->spontaneous())
        fitColumns();
}

/** No text takes so much that the new value, which has what is left, is not seen. */
void PreviewDialog::fitColumns()
{
    QTableView *list = ui->previewTableView;
    const int most = list->viewport()->width() / PreviewModel::ColumnCount;
    list->horizontalHeader()->setMinimumSectionSize(
        list->horizontalHeader()->sectionSizeHint(PreviewModel::After));
    for (const int column :
         {PreviewModel::Song, PreviewModel::Result, PreviewModel::Field, PreviewModel::Before}) {
        list->resizeColumnToContents(column);
        list->setColumnWidth(column,
                             qMin(list->columnWidth(column),
                                  qMax(most, list->horizontalHeader()->sectionSizeHint(column))));
    }
}

} // namespace tarvel4
