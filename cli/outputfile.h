#pragma once

#include "indexer/outputtarget.h"

QT_BEGIN_NAMESPACE
class QString;
QT_END_NAMESPACE

namespace tarvel4 {

struct Session;

/** Says why \a target can't be written over; silent where nothing is in the way. */
void sayObstacle(Session &session, const QString &target, OutputTarget::Obstacle obstacle);

} // namespace tarvel4
