#pragma once

#include "cli/command.h"

namespace tarvel4 {

/** The program from its words to its exit status: finds the command, and answers help itself. */
class Program
{
public:
    explicit Program(QVector<Command> commands)
        : m_commands(std::move(commands))
    {}

    /** \a words are those after the program's name. */
    ExitStatus run(QByteArrayList words) const;

private:
    const Command *find(const QByteArray &name) const;
    ExitStatus execute(const Command &command, const Arguments &arguments) const;
    QString synopsis(const Command &command) const;
    QString help() const;
    QString help(const Command &command, const QString &operand) const;

    QVector<Command> m_commands;
};

} // namespace tarvel4
