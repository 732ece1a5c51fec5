// Fuzzes the settings: definition texts are tokenised as the interpreter does and built
// through the factory against a small host that holds a few fixed settings (a number, a
// bit field, a list) and string lists; every built setting is then asked for every data
// role (whole and per sub-index), given a few values, finished and updated. Nothing may
// crash, hang, leak or read outside its bytes; a failed setting must refuse everything.
//
// Input: the first byte picks the layout format (bit 0) and the raw size (bits 1-4); the
// rest is Latin-1 text, one definition per line (at most four), built as F11, F21, ...

#include "sf/MultiSetting.h"
#include "sf/RawSetting.h"
#include "sf/Setting.h"
#include "sf/SettingFactory.h"
#include "sf/SettingHost.h"
#include "sf/parser/Interpreter.h"

#include <QStringList>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

using namespace sf;

namespace {

void check(bool condition) {
    if (!condition) {
        std::abort();
    }
}

class FuzzHost : public SettingHost {
public:
    quint32 getKXSFormat() const override { return format; }
    QString getTooltip(const QString& wsi) const override {
        return wsi == QLatin1String("W") ? QStringLiteral("help") : QString();
    }
    QStringList getStringList(const QString& name, const QString& countName) override {
        if (name == QLatin1String("L") && countName == QLatin1String("N")) {
            return {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")};
        }
        return {};
    }
    Setting* lookupSetting(const QString& codeName) override {
        for (const auto& s : settings) {
            if (s->getCodeName() == codeName) {
                return s.get();
            }
        }
        return nullptr;
    }

    Setting* build(const QString& codeName, const QString& definition, const QByteArray& bytes) {
        RawSetting raw(codeName, bytes.size(), 0, true, false);
        raw.setData(bytes.constData());
        auto tokens = std::make_unique<parser::TokenList>();
        if (!parser::Interpreter::tokenize(tokens.get(), definition, parser::TOKEN_REGEX)) {
            tokens->clear();
        }
        SettingFactory factory;
        Setting* s = factory.buildSetting(&raw, std::move(tokens), this);
        check((s != nullptr) == (factory.lastError() == SettingFactory::NoError));
        if (s) {
            check(s->getType() >= TypeNum && s->getType() <= TypeList);
            settings.emplace_back(s);
        }
        return s;
    }

    quint32 format = 1001;
    std::vector<std::unique_ptr<Setting>> settings;
};

void exercise(Setting* s) {
    for (int role = 0; role <= 15; ++role) {
        s->getData(static_cast<DataRole>(role));
    }
    if (auto* multi = dynamic_cast<MultiSetting*>(s)) {
        const int n = multi->subIndices();
        check(n >= 0);
        for (int k = -1; k <= n && k < 40; ++k) {
            for (int role = 0; role <= 15; ++role) {
                multi->getData(k, static_cast<DataRole>(role));
            }
            multi->setData(k, true);
            multi->setData(k, false);
        }
    }
    const QByteArray before = s->getBytes();
    check(before.size() == s->getSizeBytes());
    for (const QVariant& v :
         {QVariant(0), QVariant(1), QVariant(2.9), QVariant(-1e30), QVariant(std::nan("")),
          QVariant(QStringLiteral("x")), QVariant(QByteArray(s->getSizeBytes(), '\x5A'))}) {
        s->setData(v);
        check(s->getBytes().size() == s->getSizeBytes());
    }
    s->update(TypeNum);
    s->getData(RoleDisplay);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1 || size > 4096) {
        return 0;
    }
    FuzzHost host;
    host.format = (data[0] & 1) ? 1000 : 1001;
    const int rawSize = (data[0] >> 1) & 0x0F;
    host.build(QStringLiteral("Mode1"), QStringLiteral("num, W, u8, 0`3, [*2], 0, \"Mode\", \"\""),
               QByteArray(1, '\x01'));
    host.build(QStringLiteral("Flags1"), QStringLiteral("bool, 8, {a, b inverted, c}"),
               QByteArray(1, '\x05'));
    host.build(QStringLiteral("List1"), QStringLiteral("list, W, N, L, \"List\""),
               QByteArray(1, '\x02'));
    check(host.settings.size() == 3);

    const QString text =
        QString::fromLatin1(reinterpret_cast<const char*>(data) + 1, static_cast<int>(size - 1));
    const QStringList lines = text.split(QLatin1Char('\n'));
    QByteArray bytes(rawSize, '\0');
    for (int i = 0; i < rawSize; ++i) {
        bytes[i] = static_cast<char>(0x11 * (i + 1));
    }
    for (int i = 0; i < lines.size() && i < 4; ++i) {
        host.build(QStringLiteral("F%1").arg(i + 1) + QLatin1Char('1'), lines.at(i), bytes);
    }
    for (const auto& s : host.settings) {
        s->finishSetup();
    }
    for (const auto& s : host.settings) {
        exercise(s.get());
    }
    // A change of each setting re-evaluates its dependents, as the manager does.
    for (const auto& s : host.settings) {
        for (Setting* dependent : s->getDependents()) {
            check(dependent != nullptr);
            dependent->update(s->getType());
            exercise(dependent);
        }
    }
    return 0;
}
