#include "cli/outputfile.h"

#include "cli/command.h"
#include "cli/texts.h"

namespace tarvel4 {

void sayObstacle(Session &session, const QString &target, OutputTarget::Obstacle obstacle)
{
    using OutputTarget::Obstacle;
    switch (obstacle) {
    case Obstacle::NoFile:
        return session.host.say(Cli::tr("%1: non è un file").arg(target));
    case Obstacle::Song:
        return session.host.say(Cli::tr("%1: è una song, non può essere sovrascritta").arg(target));
    case Obstacle::Catalogue:
        return session.host.say(
            Cli::tr("%1: è un catalogo, non può essere sovrascritto").arg(target));
    case Obstacle::IndexFile:
        return session.host.say(
            Cli::tr("%1: appartiene all'indice di una memoria, non può essere sovrascritto")
                .arg(target));
    case Obstacle::None:
        break;
    }
}

} // namespace tarvel4
