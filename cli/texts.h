#pragma once

#include <QCoreApplication>

/** The translation context of the command line's texts. */
class Cli
{
    Q_DECLARE_TR_FUNCTIONS(Cli)
};
