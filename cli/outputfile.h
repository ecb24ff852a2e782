#pragma once

#include "indexer/outputtarget.h"

class QString;
struct Session;

/** Says why \a target can't be written over; silent where nothing is in the way. */
void sayObstacle(Session &session, const QString &target, OutputTarget::Obstacle obstacle);
