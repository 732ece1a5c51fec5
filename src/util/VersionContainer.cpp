#include "util/VersionContainer.h"

#include <QRegularExpression>
#include <QVector>

namespace util {

namespace {

bool startsWithV(const QString& name) {
    return name.at(0).toLower() == QLatin1Char('v');
}

// A decimal capture; an empty, non-numeric or overlong capture counts as 0.
qulonglong number(const QString& capture) {
    bool ok = false;
    const qulonglong value = capture.toULongLong(&ok);
    return ok ? value : 0;
}

// Compares two matches of the structured version pattern: major (1), minor (3), the
// text after the minor number (4) and the build number (5). The separator (2) is not
// compared.
int compareStructured(const QRegularExpressionMatch& a, const QRegularExpressionMatch& b) {
    for (int group : {1, 3, 4, 5}) {
        if (group == 4) {
            const int text = a.captured(group).compare(b.captured(group), Qt::CaseSensitive);
            if (text != 0) {
                return text;
            }
            continue;
        }
        const qulonglong x = number(a.captured(group));
        const qulonglong y = number(b.captured(group));
        if (x != y) {
            return x > y ? 1 : -1;
        }
    }
    return 0;
}

} // namespace

bool VersionContainer::isEmpty() const {
    return kxsVersion.isEmpty() && fwVersion.isEmpty() && enqString.isEmpty() &&
           kxsFilePath.isEmpty() && mapFilePath.isEmpty() && mapGroup.isEmpty();
}

int VersionContainer::compare(const VersionContainer& other) const {
    const QString& mine = fwVersion;
    const QString& theirs = other.fwVersion;

    // Legacy names (v306, V3p1) come before everything else.
    if (!mine.isEmpty() && !theirs.isEmpty()) {
        const bool mineLegacy = startsWithV(mine);
        const bool theirsLegacy = startsWithV(theirs);
        if (mineLegacy && !theirsLegacy) {
            return -1;
        }
        if (!mineLegacy && theirsLegacy) {
            return 1;
        }
        if (mineLegacy && theirsLegacy) {
            return mine.toLower().compare(theirs.toLower(), Qt::CaseSensitive);
        }
    }

    // Structured names. The pattern is matched against lower-cased names while its
    // prefix is upper case, so in practice it never matches and the text comparison
    // below decides; the released ordering depends on that, so it stays so.
    static const QRegularExpression pattern(QStringLiteral("KX(\\d*)([ .\\-])(\\d*)(\\D*)(\\d*)"));
    const QRegularExpressionMatch a = pattern.match(mine.toLower().trimmed());
    const QRegularExpressionMatch b = pattern.match(theirs.toLower().trimmed());
    if (!a.hasMatch() || !b.hasMatch()) {
        return mine.toLower().compare(theirs.toLower(), Qt::CaseSensitive);
    }
    return compareStructured(a, b);
}

bool VersionContainer::operator==(const VersionContainer& other) const {
    return kxsVersion == other.kxsVersion && fwVersion == other.fwVersion &&
           enqString == other.enqString && kxsFilePath == other.kxsFilePath &&
           mapFilePath == other.mapFilePath && mapGroup == other.mapGroup &&
           kxsFormat == other.kxsFormat;
}

QString printVersion(const QString& version) {
    if (version.isEmpty() || !startsWithV(version)) {
        return version;
    }
    // Work on code points so that letters outside the basic plane go as well.
    QVector<uint> kept;
    for (uint codePoint : version.toUcs4()) {
        if (!QChar::isLetter(codePoint)) {
            kept.append(codePoint);
        }
    }
    QString result = QStringLiteral("KX");
    for (int i = 0; i < kept.size(); ++i) {
        const uint codePoint = kept.at(i);
        if (QChar::requiresSurrogates(codePoint)) {
            result.append(QChar(QChar::highSurrogate(codePoint)));
            result.append(QChar(QChar::lowSurrogate(codePoint)));
        } else {
            result.append(QChar(codePoint));
        }
        if (i == 0) {
            result.append(QLatin1Char('.'));
        }
    }
    return result;
}

} // namespace util
