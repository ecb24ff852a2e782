#include "cli/opencatalogue.h"

#include "cli/texts.h"
#include "db/database.h"

#include <QFileInfo>

namespace tarvel4 {

bool openCatalogue(Database &db, Session &session)
{
    const bool isThere = session.catalogue.isEmpty() || QFileInfo(session.catalogue).isFile();
    // SQLite opens any file; it is a catalogue when it has songs.
    if (isThere && db.init(session.catalogue) && !db.genres().isEmpty())
        return true;
    session.host.say(Cli::tr("il catalogo non può essere letto"));
    return false;
}

} // namespace tarvel4
