#pragma once

#include "tests/storage/textliteral.h"

#include <QtTest>

#include <array>
#include <tuple>
#include <type_traits>
#include <utility>

namespace tarvel4 {

/** What a row holds in one column: the value or what makes one. A literal stands for a text in
 * UTF-8, or for a list of its words. */
template <typename Type> struct Cell
{
    Cell() = default;
    template <typename Given>
    Cell(const Given &given)
        : value(made(given))
    {}

    Type value{};

private:
    template <typename Given> static Type made(const Given &given)
    {
        constexpr bool isLiteral = std::is_convertible_v<Given, const char *>;
        if constexpr (isLiteral && std::is_same_v<Type, QString>)
            return QString::fromUtf8(given);
        else if constexpr (isLiteral && std::is_same_v<Type, QStringList>)
            return QString::fromUtf8(given).split(QLatin1Char(' '), Qt::SkipEmptyParts);
        else
            return static_cast<Type>(given);
    }
};

namespace TableColumns {
constexpr std::array<const char *, 8> names = {"1", "2", "3", "4", "5", "6", "7", "8"};

template <typename Type> const Type &cell(std::size_t column)
{
    return *static_cast<const Type *>(QTest::qData(names[column], qMetaTypeId<Type>()));
}

template <typename... Types, std::size_t... Columns>
std::tuple<Types...> cells(std::index_sequence<Columns...>)
{
    return {cell<Types>(Columns)...};
}
} // namespace TableColumns

/** The rows of a data-driven test. In its _data(): `const Table<QString, int> row;`, and for each
 * row: `row("a missing file is told", "gone.mid", 3);`. */
template <typename... Types> class Table
{
public:
    Table()
    {
        std::size_t column = 0;
        (QTest::addColumn<Types>(TableColumns::names[column++]), ...);
    }

    void operator()(const char *sentence, const Cell<Types> &...cells) const
    {
        (QTest::newRow(sentence) << ... << cells.value);
    }
};

/** The cells of the row that is tested: `const auto [file, status] = cells<QString, int>();` */
template <typename... Types> std::tuple<Types...> cells()
{
    return TableColumns::cells<Types...>(std::index_sequence_for<Types...>());
}

} // namespace tarvel4
