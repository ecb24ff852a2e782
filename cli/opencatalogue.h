#pragma once

#include "cli/command.h"

namespace tarvel4 {

class Database;

/** Opens the catalogue that the options name; false, having said why, when it can't be read. */
bool openCatalogue(Database &db, Session &session);

} // namespace tarvel4
