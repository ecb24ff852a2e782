#pragma once

class Index;
class WorkflowHost;

/** Has the host's running progress follow an index. */
void showProgressOf(Index &index, WorkflowHost &host);
