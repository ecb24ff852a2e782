#pragma once

#include "storage/outcome.h"

#include <QString>

namespace tarvel4 {

/** Why the last call of the system's failed, also one below Qt, which keeps no number of it. */
namespace SystemError {

/** Sets what a call failed of that fails without setting an error. */
void presumeFullDisk();
void presumeFailedMedium();
void presumeDenied();

/** Done, or the cause that the system has just set; \a isWriting as in Outcome::ofSystemError(). */
Outcome outcomeOf(bool isDone, const QString &path, bool isWriting = true);

} // namespace SystemError

} // namespace tarvel4
