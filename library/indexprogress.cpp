#include "library/indexprogress.h"

#include "indexer/index.h"
#include "library/workflowhost.h"

namespace tarvel4 {

void showProgressOf(Index &index, WorkflowHost &host)
{
    index.setOnRecovered(
        [&host](const QString &path, Recovery::Result outcome) { host.recovered(path, outcome); });
    QObject::connect(&index, &Index::fileFoundChanged,
                     [&host](int count) { host.setProgressValue(count); });
    QObject::connect(&index, &Index::progressMaxSetup,
                     [&host](int maximum) { host.setProgressMaximum(maximum); });
    QObject::connect(&index, &Index::progressValueChanged,
                     [&host](int value) { host.setProgressValue(value); });
}

} // namespace tarvel4
