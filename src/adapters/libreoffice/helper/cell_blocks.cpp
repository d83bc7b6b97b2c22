#include "adapters/libreoffice/helper/cell_blocks.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace bridge::office {

namespace {

// Each cell once, by rows.
std::vector<const CellChange*> sorted(const std::vector<CellChange>& changes) {
    std::vector<const CellChange*> order;
    for (const auto& change : changes)
        order.push_back(&change);
    const auto place = [](const CellChange* change) { return std::tuple(change->row, change->column); };
    std::stable_sort(order.begin(), order.end(), [&](auto* a, auto* b) { return place(a) < place(b); });
    // From behind, so that the last change of a cell is the one that is kept.
    const auto first =
        std::unique(order.rbegin(), order.rend(), [&](auto* a, auto* b) { return place(a) == place(b); });
    order.erase(order.begin(), first.base());
    return order;
}

} // namespace

std::vector<CellBlock> blocksOf(const std::vector<CellChange>& changes) {
    const auto order = sorted(changes);
    std::vector<CellBlock> blocks;
    std::map<std::pair<int32_t, int32_t>, size_t> ending; // blocks by their columns, to be continued by the next row
    for (size_t start = 0; start < order.size();) {
        const int32_t row = order[start]->row;
        size_t end = start + 1;
        while (end < order.size() && order[end]->row == row && order[end]->column == order[end - 1]->column + 1)
            ++end;
        const std::pair columns(order[start]->column, order[end - 1]->column);
        const auto found = ending.find(columns);
        if (found != ending.end() && blocks[found->second].range.lastRow == row - 1) {
            blocks[found->second].range.lastRow = row;
        } else {
            ending[columns] = blocks.size();
            blocks.push_back({{columns.first, row, columns.second, row}, {}});
        }
        auto& block = blocks[ending[columns]].changes;
        for (; start < end; ++start)
            block.push_back(order[start]);
    }
    return blocks;
}

} // namespace bridge::office
