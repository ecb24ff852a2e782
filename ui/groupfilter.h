#pragma once

#include "library/jobreport.h"

#include <QComboBox>

#include <optional>

namespace tarvel4 {

/** Lets the user choose which songs of a report are listed: all, or those of one group. */
class GroupFilter : public QComboBox
{
    Q_OBJECT

public:
    explicit GroupFilter(QWidget *parent = nullptr);

    /** Offers the groups of \a report with their numbers; all are chosen. */
    void offer(const JobReport &report);
    /** The same in the present language; the choice stays. */
    void retranslate(const JobReport &report);

    /** Nothing: all songs. */
    std::optional<JobReport::Group> chosen() const;
};

} // namespace tarvel4
