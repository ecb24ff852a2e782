#pragma once

#include <QtTest>

namespace tarvel4 {

/** The columns of a test's table: columns<QString, bool>("path", "kept"). */
template <class... Types, class... Names> void columns(const Names *...names)
{
    static_assert(sizeof...(Types) == sizeof...(Names), "each column has a type and a name");
    (QTest::addColumn<Types>(names), ...);
}

/** A row of it; literals are QStrings, in UTF-8. */
template <class... Cells> void row(const char *sentence, const Cells &...cells)
{
    QTestData &data = QTest::newRow(sentence);
    ((data << cells), ...);
}

} // namespace tarvel4
