#pragma once

#include <QAbstractListModel>

#include <algorithm>
#include <set>
#include <vector>

namespace bridge {

// Rows that a view shows, each known by its `id`. What changes elsewhere is told to the view row by row, so that it
// keeps its delegates, its place and its focus. `Row` has an id, equality, and value(role).
template <typename Row> class RowModel : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
    }
    QVariant data(const QModelIndex& index, int role) const override {
        const auto at = static_cast<size_t>(index.row()); // of none it is -1
        return at < m_rows.size() ? m_rows[at].value(role) : QVariant();
    }

    const std::vector<Row>& rows() const { return m_rows; }

    // Makes these the rows, in this order.
    void show(const std::vector<Row>& wanted) {
        std::set<decltype(Row::id)> staying;
        for (const auto& row : wanted)
            staying.insert(row.id);
        for (auto at = static_cast<int>(m_rows.size()); at-- > 0;)
            if (!staying.contains(m_rows[static_cast<size_t>(at)].id)) remove(at);
        std::set<decltype(Row::id)> known;
        for (const auto& row : m_rows)
            known.insert(row.id);

        for (size_t at = 0; at < wanted.size();) {
            if (at < m_rows.size() && m_rows[at].id == wanted[at].id) {
                update(at, wanted[at]);
                ++at;
            } else if (const auto from = find(wanted[at].id, at); from < m_rows.size()) {
                move(from, at);
            } else {
                auto end = at + 1;
                while (end < wanted.size() && !known.contains(wanted[end].id))
                    ++end;
                insert(at, {wanted.begin() + static_cast<std::ptrdiff_t>(at),
                            wanted.begin() + static_cast<std::ptrdiff_t>(end)});
                at = end;
            }
        }
        // What an id that came twice has left over.
        while (m_rows.size() > wanted.size())
            remove(static_cast<int>(m_rows.size()) - 1);
    }

private:
    size_t find(const decltype(Row::id)& id, size_t from) const {
        const auto found = std::find_if(m_rows.begin() + static_cast<std::ptrdiff_t>(from), m_rows.end(),
                                        [&](const Row& row) { return row.id == id; });
        return static_cast<size_t>(found - m_rows.begin());
    }

    void update(size_t at, const Row& row) {
        if (m_rows[at] == row) return;
        m_rows[at] = row;
        const auto changed = index(static_cast<int>(at));
        emit dataChanged(changed, changed);
    }
    void move(size_t from, size_t to) {
        beginMoveRows({}, static_cast<int>(from), static_cast<int>(from), {}, static_cast<int>(to));
        const auto begin = m_rows.begin();
        std::rotate(begin + static_cast<std::ptrdiff_t>(to), begin + static_cast<std::ptrdiff_t>(from),
                    begin + static_cast<std::ptrdiff_t>(from) + 1);
        endMoveRows();
    }
    void insert(size_t at, const std::vector<Row>& rows) {
        beginInsertRows({}, static_cast<int>(at), static_cast<int>(at + rows.size()) - 1);
        m_rows.insert(m_rows.begin() + static_cast<std::ptrdiff_t>(at), rows.begin(), rows.end());
        endInsertRows();
    }
    void remove(int at) {
        beginRemoveRows({}, at, at);
        m_rows.erase(m_rows.begin() + at);
        endRemoveRows();
    }

    std::vector<Row> m_rows;
};

} // namespace bridge
