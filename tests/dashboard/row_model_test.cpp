#include "app/dashboard/row_model.h"

#include <gmock/gmock.h>

#include <random>

namespace bridge {
namespace {

struct Row {
    QString id;
    int number = 0;
    bool operator==(const Row&) const = default;
    QVariant value(int) const { return number; }
};

// A view that believes only what it is told.
class View {
public:
    explicit View(RowModel<Row>& model) : m_model(model) {
        QObject::connect(&model, &QAbstractItemModel::rowsInserted, [this](const QModelIndex&, int first, int last) {
            m_said << QString("insert %1-%2").arg(first).arg(last);
            for (int row = first; row <= last; ++row)
                seen.insert(seen.begin() + row, m_model.rows()[static_cast<size_t>(row)]);
        });
        QObject::connect(&model, &QAbstractItemModel::rowsRemoved, [this](const QModelIndex&, int first, int last) {
            m_said << QString("remove %1-%2").arg(first).arg(last);
            seen.erase(seen.begin() + first, seen.begin() + last + 1);
        });
        QObject::connect(&model, &QAbstractItemModel::rowsMoved,
                         [this](const QModelIndex&, int from, int, const QModelIndex&, int to) {
                             m_said << QString("move %1-%2").arg(from).arg(to);
                             std::rotate(seen.begin() + to, seen.begin() + from, seen.begin() + from + 1);
                         });
        QObject::connect(&model, &QAbstractItemModel::dataChanged, [this](const QModelIndex& first) {
            m_said << QString("change %1").arg(first.row());
            seen[static_cast<size_t>(first.row())] = m_model.rows()[static_cast<size_t>(first.row())];
        });
        QObject::connect(&model, &QAbstractItemModel::modelReset, [this] { m_said << "reset"; });
    }
    QStringList said() { return std::exchange(m_said, {}); }

    std::vector<Row> seen;

private:
    RowModel<Row>& m_model;
    QStringList m_said;
};

TEST(Rows, ComeInOnePieceAtFirst) {
    RowModel<Row> model;
    View view(model);
    model.show({{"a", 1}, {"b", 2}, {"c", 3}});
    EXPECT_EQ(view.said(), QStringList("insert 0-2"));
    EXPECT_EQ(model.rowCount(), 3);
    EXPECT_EQ(model.data(model.index(1), 0), 2);
    EXPECT_EQ(model.rowCount(model.index(1)), 0);
    EXPECT_FALSE(model.data({}, 0).isValid());
}

TEST(Rows, AreTouchedOnlyWhereSomethingChanged) {
    RowModel<Row> model;
    View view(model);
    model.show({{"a", 1}, {"b", 2}, {"c", 3}});
    view.said();
    model.show({{"a", 1}, {"b", 5}, {"c", 3}});
    EXPECT_EQ(view.said(), QStringList("change 1"));
    model.show({{"a", 1}, {"b", 5}, {"c", 3}});
    EXPECT_EQ(view.said(), QStringList());
    model.show({{"a", 1}, {"c", 3}});
    EXPECT_EQ(view.said(), QStringList("remove 1-1"));
    model.show({{"a", 1}, {"x", 0}, {"y", 0}, {"c", 3}});
    EXPECT_EQ(view.said(), QStringList("insert 1-2"));
    model.show({{"c", 3}, {"a", 1}, {"x", 0}, {"y", 0}});
    EXPECT_EQ(view.said(), QStringList("move 3-0"));
}

TEST(Rows, AreWhatWasWantedWhateverItWas) {
    RowModel<Row> model;
    View view(model);
    std::mt19937 random(7);
    for (int round = 0; round < 400; ++round) {
        std::vector<Row> wanted;
        for (auto left = random() % 12; left > 0; --left)
            wanted.push_back({QString::number(random() % 9), static_cast<int>(random() % 3)}); // ids come twice, too
        model.show(wanted);
        ASSERT_EQ(model.rows(), wanted) << round;
        ASSERT_EQ(view.seen, wanted) << round;
        ASSERT_FALSE(view.said().contains("reset"));
    }
}

} // namespace
} // namespace bridge
