#include "cli/opencatalogue.h"

#include "cli/texts.h"
#include "db/database.h"
#include "storage/regularfile.h"

namespace tarvel4 {

bool openCatalogue(Database &db, Session &session)
{
    const QString path = session.catalogue;
    if (!path.isEmpty()) {
        if (const Outcome read = RegularFile(path).outcome(); !read) {
            jobFailed(session, path, read);
            return false;
        }
    }
    // SQLite opens any file; it is a catalogue when it has songs.
    if (db.init(path) && !db.genres().isEmpty())
        return true;
    session.host.say(path.isEmpty() ? Cli::tr("il catalogo non può essere letto")
                                    : Cli::tr("%1: non è un catalogo, o è danneggiato").arg(path));
    return false;
}

} // namespace tarvel4
