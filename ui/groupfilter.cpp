#include "ui/groupfilter.h"

#include <QSignalBlocker>

namespace tarvel4 {

namespace {

QString entryText(const QString &word, int number)
{
    QString text = word + QStringLiteral(" (%1)").arg(number);
    text[0] = text.at(0).toUpper();
    return text;
}

} // namespace

GroupFilter::GroupFilter(QWidget *parent)
    : QComboBox(parent)
{
    setSizeAdjustPolicy(QComboBox::AdjustToContents);
}

void GroupFilter::offer(const JobReport &report)
{
    const QSignalBlocker blocker(this);
    clear();
    addItem(entryText(tr("tutte"), static_cast<int>(report.entries().size())));
    for (const JobReport::Group group : report.groups())
        addItem(entryText(report.word(group, false), report.count(group)), static_cast<int>(group));
}

void GroupFilter::retranslate(const JobReport &report)
{
    const int index = currentIndex();
    offer(report);
    const QSignalBlocker blocker(this);
    setCurrentIndex(index);
}

std::optional<JobReport::Group> GroupFilter::chosen() const
{
    const QVariant group = currentData();
    if (!group.isValid())
        return std::nullopt;
    return static_cast<JobReport::Group>(group.toInt());
}

} // namespace tarvel4
