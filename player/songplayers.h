#pragma once

#include "player/songplayer.h"
#include "player/songsound.h"

#include <QStringList>

#include <map>
#include <memory>

namespace tarvel4 {

/** The players that there are, by the kind of song. */
class SongPlayers
{
public:
    virtual ~SongPlayers() = default;

    /** Null where such a song can't be listened to here. */
    virtual SongPlayer *playerFor(SongSound::Kind kind) = 0;
};

/** Those of this system, each looked for when it is first asked for: the program starts without
 * any. */
class SystemPlayers : public SongPlayers
{
public:
    /** \a pluginFolders: where the plugin that plays MP3 songs may be. */
    explicit SystemPlayers(const QStringList &pluginFolders = installedPlugins());

    SongPlayer *playerFor(SongSound::Kind kind) override;

    /** Where the program's plugins are, installed and in the tree that it was built in. */
    static QStringList installedPlugins();

private:
    std::unique_ptr<SongPlayer> create(SongSound::Kind kind) const;

    QStringList m_pluginFolders;
    std::map<SongSound::Kind, std::unique_ptr<SongPlayer>> m_players; ///< null: none
};

} // namespace tarvel4
