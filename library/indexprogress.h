#pragma once

namespace tarvel4 {

class Index;
class WorkflowHost;

/** Has the host's running progress follow an index. */
void showProgressOf(Index &index, WorkflowHost &host);

} // namespace tarvel4
