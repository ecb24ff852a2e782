#pragma once

#include "library/volume.h"
#include "player/songplayers.h"
#include "ui/removabledrive.h"

#include <memory>
#include <utility>

namespace tarvel4 {

/** What the pictures of the window need around it: a card, a drive for it, and players that are
 * silent. */
namespace Stage {

/** The card is a folder that is no system disk. */
class CardVolume : public Volume
{
public:
    explicit CardVolume(QString card)
        : m_card(std::move(card))
    {}

    QString rootOf(const QString &) const override { return m_card; }
    bool isRootFolder(const QString &path) const override { return path == m_card; }
    bool isSystemDisk(const QString &) const override { return false; }

private:
    const QString m_card;
};

class SilentPlayer : public SongPlayer
{
public:
    QString play(const SongSound &, qint64 fromMs, Ended) override
    {
        m_position = fromMs;
        return {};
    }
    void stop() override {}
    qint64 position() const override { return m_position; }

private:
    qint64 m_position = 0;
};

class SilentPlayers : public SongPlayers
{
public:
    SongPlayer *playerFor(SongSound::Kind) override { return &m_player; }

private:
    SilentPlayer m_player;
};

class Drive : public RemovableDrive
{
public:
    Ejection eject() override { return {Ejection::Result::Ejected, {}}; }
};

class Drives : public RemovableDrives
{
public:
    std::unique_ptr<RemovableDrive> driveOf(const QString &) override
    {
        return std::make_unique<Drive>();
    }
};

} // namespace Stage

} // namespace tarvel4
