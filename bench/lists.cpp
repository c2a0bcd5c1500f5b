// A long list, shown, sorted and filtered, against a bare model and proxy over the same rows.
#include "base/ini_store.h"
#include "bench/fast_peer.h"
#include "ui/lists/list_view.h"

#include <QApplication>
#include <QSortFilterProxyModel>

namespace tollwick::bench {

// Has its texts as the view wants them from the beginning.
class BareModel : public QAbstractTableModel {
public:
    explicit BareModel(const std::vector<OutboxRecord>& mails) {
        for (const OutboxRecord& mail : mails)
            rows_.push_back({QString::fromStdString(mail.recipient.text()),
                             QString::fromStdString(mail.node.text()), mail.size,
                             QString::fromStdString(mail.file_name.text())});
    }
    void setShown(bool shown) {
        beginResetModel();
        shown_rows_ = shown ? rows_.size() : 0;
        endResetModel();
    }
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(shown_rows_);
    }
    [[nodiscard]] int columnCount(const QModelIndex& = {}) const override { return 4; }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        return role == Qt::DisplayRole ? rows_[index.row()][index.column()] : QVariant();
    }

private:
    QList<QVariantList> rows_;
    qsizetype shown_rows_ = 0;
};

// Milliseconds until the change is to be seen.
static double untilPainted(QTreeView& view, const std::function<void()>& change) {
    QApplication::processEvents();
    return timeOf([&] {
        change();
        QApplication::processEvents();
        view.viewport()->repaint();
    });
}

static const Measurement lists("lists", [] {
    IniStore store({}, {}); // nothing is stored
    Settings settings(store);
    const StringTable texts(kEnglish);
    ServiceData data;
    for (int i = 0; i < 100'000; ++i)
        data.outbox.push_back(sampleMail(i));

    ListView ours(settings);
    BareModel model(data.outbox);
    QSortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    proxy.setFilterKeyColumn(-1);
    proxy.setFilterCaseSensitivity(Qt::CaseInsensitive);
    proxy.setSortCaseSensitivity(Qt::CaseInsensitive);
    QTreeView floor;
    floor.setRootIsDecorated(false);
    floor.setUniformRowHeights(true);
    floor.setModel(&proxy);
    for (QTreeView* view : {static_cast<QTreeView*>(&ours), &floor}) {
        view->resize(900, 600);
        view->show();
    }

    using Change = std::function<void()>;
    const auto measure = [&](const char* what, const Change& undo_ours, const Change& do_ours,
                             const Change& undo_floor, const Change& do_floor) {
        const auto timed = [](QTreeView& view, const Change& undo, const Change& change) {
            view.model()->sort(-1, Qt::AscendingOrder);
            undo();
            return untilPainted(view, change);
        };
        print(std::string("100,000 mails ") + what, "ms",
              inTurn(
                  9, [&] { return timed(ours, undo_ours, do_ours); },
                  [&] { return timed(floor, undo_floor, do_floor); }),
              1.5);
        require(ours.model()->rowCount() == proxy.rowCount(), "the rows differ");
    };
    measure(
        "shown", [&] { ours.showContents({}, {}); },
        [&] { ours.showContents("outbox", listContents("outbox", data, texts)); },
        [&] { model.setShown(false); }, [&] { model.setShown(true); });
    const auto sort = [](QTreeView& view, int column) {
        return [&view, column] { view.model()->sort(column, Qt::AscendingOrder); };
    };
    const Change nothing = [] {};
    measure("sorted by recipient", nothing, sort(ours, 0), nothing, sort(floor, 0));
    measure("sorted by size", nothing, sort(ours, 2), nothing, sort(floor, 2));
    measure(
        "filtered", [&] { ours.setFilter({}); }, [&] { ours.setFilter("node17"); },
        [&] { proxy.setFilterFixedString({}); }, [&] { proxy.setFilterFixedString("node17"); });
});

} // namespace tollwick::bench
