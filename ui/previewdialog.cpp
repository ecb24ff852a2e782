#include "ui/previewdialog.h"

#include "ui/lastcolumn.h"
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
    new LastColumn(*list);
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

/**
 * No text takes so much that the new value, which has what is left, is not seen. Where even a fifth
 * for each is too much, they give up what their headings leave.
 */
void PreviewDialog::fitColumns()
{
    QTableView *list = ui->previewTableView;
    QHeaderView &header = *list->horizontalHeader();
    const int room = list->viewport()->width();
    const int most = room / PreviewModel::ColumnCount;
    const int last = header.sectionSizeHint(PreviewModel::After);
    int excess = qMax(most, last) - room;
    int spare = 0;
    const std::initializer_list<int> others{PreviewModel::Song, PreviewModel::Result,
                                            PreviewModel::Field, PreviewModel::Before};
    for (const int column : others) {
        const int least = header.sectionSizeHint(column);
        list->resizeColumnToContents(column);
        const int width = qMin(list->columnWidth(column), qMax(most, least));
        list->setColumnWidth(column, width);
        excess += width;
        spare += width - least;
    }
    excess = qMin(excess, spare);
    for (const int column : others) {
        if (excess <= 0)
            break;
        const int width = list->columnWidth(column);
        const int given = (width - header.sectionSizeHint(column)) * excess;
        list->setColumnWidth(column, width - (given + spare - 1) / spare);
    }
    list->setColumnWidth(PreviewModel::After, last);
}

} // namespace tarvel4
