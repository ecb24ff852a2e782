#pragma once

#include "library/messages.h"
#include "library/progress.h"
#include "library/questions.h"

namespace tarvel4 {

/** All that a workflow may need from whoever runs it. */
class WorkflowHost : public Progress, public Questions, public Messages
{};

} // namespace tarvel4
