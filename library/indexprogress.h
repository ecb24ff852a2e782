#pragma once

class Index;
class WorkflowHost;

/** Has the host's running progress follow an index. */
void showProgressOf(const Index &index, WorkflowHost &host);
