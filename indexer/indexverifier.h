#pragma once

#include <QString>
#include <QVector>

/** One disagreement between an index file and the layout, the other files or the memory. */
struct IndexProblem
{
    QString file;
    int record = -1; ///< 0-based; -1 when the whole file is meant
    QString problem;
};

/**
 * Checks a prepared memory by the rules of its layout, never by building again, so that it can
 * catch a fault of the builder; docs/formats.md, Player memory.
 */
class IndexVerifier
{
public:
    explicit IndexVerifier(const QString &root);

    /** All disagreements, file by file; empty for a true memory. Changes nothing. */
    QVector<IndexProblem> verify() const;

private:
    QString m_root;
};
