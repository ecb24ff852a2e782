#pragma once

#include <QCoreApplication>

namespace tarvel4 {

/** The translation context of the command line's texts. */
class Cli
{
    Q_DECLARE_TR_FUNCTIONS(Cli)
};

} // namespace tarvel4
