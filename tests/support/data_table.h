#pragma once

// Declares the columns of a `_data()` table and adds one QTest::newRow per
// case, named by its first field, so that short cases can share a line:
//   addTable<double, int>({"radius", "ring"}, {{"bull's edge", 7, RingBull}, ...});

#include <QTest>

#include <array>
#include <tuple>
#include <utility>

template <typename... Columns>
void addTable(const std::array<const char *, sizeof...(Columns)> &names,
              std::initializer_list<std::tuple<const char *, Columns...>> rows)
{
    [&names]<std::size_t... i>(std::index_sequence<i...>) {
        (QTest::addColumn<Columns>(names[i]), ...);
    }(std::index_sequence_for<Columns...>{});
    for (const auto &row : rows)
        std::apply([](const char *name, const Columns &...values) { (QTest::newRow(name) << ... << values); }, row);
}
