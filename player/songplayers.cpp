#include "player/songplayers.h"

#include "player/fluidplayer.h"

#include <QCoreApplication>
#include <QDir>
#include <QPluginLoader>

namespace tarvel4 {

namespace {

std::unique_ptr<SongPlayer> fromPlugin(const QString &file)
{
    QPluginLoader loader(file);
    auto *plugin = qobject_cast<SongPlayerPlugin *>(loader.instance());
    return std::unique_ptr<SongPlayer>(plugin ? plugin->createPlayer() : nullptr);
}

} // namespace

SystemPlayers::SystemPlayers(const QStringList &pluginFolders)
    : m_pluginFolders(pluginFolders)
{}

SongPlayer *SystemPlayers::playerFor(SongSound::Kind kind)
{
    auto player = m_players.find(kind);
    if (player == m_players.end())
        player = m_players.emplace(kind, create(kind)).first;
    return player->second.get();
}

std::unique_ptr<SongPlayer> SystemPlayers::create(SongSound::Kind kind) const
{
    if (kind == SongSound::Kind::Midi) {
        const QString soundfont = FluidPlayer::systemSoundfont();
        const FluidLibrary *fluid = soundfont.isEmpty() ? nullptr : FluidLibrary::load();
        if (!fluid)
            return nullptr;
        return std::make_unique<FluidPlayer>(
            *fluid, soundfont, FluidPlayer::Output{FluidPlayer::systemDrivers(), QString()});
    }
    for (const QString &folder : m_pluginFolders) {
        if (auto player = fromPlugin(QDir(folder).filePath(QStringLiteral("tarvel4soft_mp3"))))
            return player;
    }
    return nullptr;
}

QStringList SystemPlayers::installedPlugins()
{
    const QDir programs(QCoreApplication::applicationDirPath());
    return {programs.filePath(QStringLiteral("../" TARVEL4_PLUGINS)),
            programs.filePath(QStringLiteral("../player"))};
}

} // namespace tarvel4
