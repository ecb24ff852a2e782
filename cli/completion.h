#pragma once

#include "cli/command.h"

namespace tarvel4 {

/** The scripts by which shells complete a command line, made from the table that --help shows. */
class Completion
{
public:
    explicit Completion(QVector<Command> commands)
        : m_commands(std::move(commands))
    {}

    static bool knows(const QByteArray &shell);

    /** The script for a shell that is known: bash, zsh or fish. */
    QString script(const QByteArray &shell) const;

private:
    QString bash() const;
    QString zsh() const;
    QString fish() const;
    QStringList names() const;

    QVector<Command> m_commands;
};

} // namespace tarvel4
