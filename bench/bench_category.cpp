// Building a category grid and walking every table row of it, for growing numbers of
// settings: both should grow linearly.

#include "sf/Category.h"
#include "sf/CategoryIndex.h"
#include "sf/ExpandableSetting.h"
#include "sf/SettingHost.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

namespace {

class NullHost : public sf::SettingHost {
public:
    quint32 getKXSFormat() const override { return 1001; }
    QString getTooltip(const QString&) const override { return QString(); }
    QStringList getStringList(const QString&, const QString&) override { return {}; }
    sf::Setting* lookupSetting(const QString&) override { return nullptr; }
};

class Plain : public sf::Setting {
public:
    Plain(const QString& name, sf::SettingHost* host)
        : sf::Setting(name, std::make_unique<sf::parser::TokenList>(), host) {}
    bool setData(const QVariant&) override { return false; }
};

class Group : public sf::ExpandableSetting {
public:
    Group(const QString& name, sf::SettingHost* host)
        : sf::ExpandableSetting(name, std::make_unique<sf::parser::TokenList>(), host) {}
    QVariant getData(int, sf::DataRole) override { return QVariant(); }
    bool setData(int, const QVariant&) override { return false; }
    bool setData(const QVariant&) override { return false; }
    int subIndices() override { return 8; }
    int expandedSize() override { return 9; }
    int unexpandedSize() override { return 1; }
};

// `count` settings: rows of two presets (final 1 and 2), every tenth row a foldable group.
// Each keeps one reference of its own so that it outlives the categories built from it.
struct Settings {
    explicit Settings(int count) {
        for (int index = 0; index < count; ++index) {
            const QString name =
                QStringLiteral("SETTING%1_").arg(index / 2) + QString::number(index % 2 + 1);
            sf::Setting* setting = (index / 2) % 10 == 0
                                       ? static_cast<sf::Setting*>(new Group(name, &host))
                                       : new Plain(name, &host);
            setting->addReference();
            list.push_back(std::unique_ptr<sf::Setting>(setting));
        }
    }
    NullHost host;
    std::vector<std::unique_ptr<sf::Setting>> list;
};

void BM_AppendSettings(benchmark::State& state) {
    Settings settings(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        sf::Category category(QStringLiteral("Bench"), QStringLiteral("B"), QString(), true);
        for (const auto& setting : settings.list)
            category.appendSetting(setting.get());
        benchmark::DoNotOptimize(category.getSize());
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_AppendSettings)->Arg(500)->Arg(5000)->Complexity(benchmark::oN);

// Unfolds every group, then asks for the setting of every table row and column, as a
// table model does after a change.
void BM_WalkRowsAfterUnfolding(benchmark::State& state) {
    Settings settings(static_cast<int>(state.range(0)));
    sf::Category category(QStringLiteral("Bench"), QStringLiteral("B"), QString(), true);
    for (const auto& setting : settings.list)
        category.appendSetting(setting.get());
    bool expand = true;
    for (auto _ : state) {
        for (int row = 0; row < category.getLiteralSize(); row += 10) {
            sf::CategoryIndex* cell = category.getAtLiteral(row, 0);
            if (expand)
                category.expandSetting(cell);
            else
                category.unexpandSetting(cell);
        }
        expand = !expand;
        int subIndex = 0;
        for (int row = 0; row < category.getSize(); ++row) {
            for (int column = 0; column < category.numberOfPresets(); ++column)
                benchmark::DoNotOptimize(category.getSettingAt(row, column, &subIndex));
        }
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_WalkRowsAfterUnfolding)->Arg(500)->Arg(5000)->Complexity(benchmark::oN);

} // namespace

BENCHMARK_MAIN();
