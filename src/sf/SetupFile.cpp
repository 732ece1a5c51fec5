#include "sf/SetupFile.h"

#include "app/Constants.h"
#include "sf/Setting.h"
#include "sf/SettingManager.h"
#include "sf/parser/HexParser.h"
#include "util/VersionCatalogue.h"
#include "util/VersionParser.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryFile>

#include <cstdio>

namespace sf {

namespace {

QString loadErrorText(int code, const util::VersionContainer& version) {
    switch (code) {
    case SettingManager::LoadLayoutFailed:
        return QStringLiteral("cannot open the layout file %1").arg(version.kxsFilePath);
    case SettingManager::LoadImageFailed:
        return QStringLiteral("not a setup file, or corrupt or empty");
    case SettingManager::LoadNoVersion:
        return QStringLiteral("the layout file %1 carries no version").arg(version.kxsFilePath);
    case SettingManager::LoadVersionMismatch:
        return QStringLiteral("the file's versions differ from the layout's");
    default:
        return QStringLiteral("cannot load the settings (error %1)").arg(code);
    }
}

} // namespace

SetupFile::SetupFile() : m_manager(std::make_unique<SettingManager>()) {
    QObject::connect(m_manager.get(), &SettingManager::problem,
                     [this](const QString& message) { m_messages.append(message); });
}

SetupFile::~SetupFile() = default;

bool SetupFile::open(const QString& path, const QString& layoutPath, QString* error) {
    m_path = path;
    m_messages.clear();
    m_problems = 0;
    if (!QFileInfo(path).isFile()) {
        *error = QStringLiteral("no such file");
        return false;
    }
    // The image's metadata, read once.
    const parser::HexParser::Metadata meta = parser::HexParser::readAllMetadata(path);
    const bool found =
        layoutPath.isEmpty()
            ? catalogueVersion(meta.fwVersion, &m_version, error)
            : versionFromLayout(layoutPath, meta.fwVersion, meta.kxsVersion, meta.enqString, error);
    if (!found) {
        return false;
    }
    const int result = open(path, m_version);
    if (result < 0) {
        *error = loadErrorText(result, m_version);
        return false;
    }
    return true;
}

int SetupFile::open(const QString& path, const util::VersionContainer& version) {
    m_path = path;
    m_version = version;
    // The manager chooses the processor kind from the layout version; the versions the
    // image records are not checked.
    const int result = m_manager->loadRawSettings(m_version, path, true);
    m_problems = qMax(0, result);
    return result;
}

QString SetupFile::recordedFirmware(const QString& path) {
    return parser::HexParser::readAllMetadata(path).fwVersion;
}

bool SetupFile::catalogueVersion(const QString& fwVersion, util::VersionContainer* version,
                                 QString* error) {
    if (fwVersion.isEmpty()) {
        *error =
            QStringLiteral("the file names no firmware version; give its layout with --layout");
        return false;
    }
    util::VersionParser parser;
    QStringList warnings;
    const auto collect = [&warnings](const QString& text) { warnings.append(text); };
    QObject::connect(&parser, &util::VersionParser::showError, collect);
    QObject::connect(&parser, &util::VersionParser::showWarning, collect);
    util::VersionCatalogue catalogue;
    catalogue.enumerate(ui::PATH_FW, ui::PATH_KXS, parser);
    for (const util::VersionContainer& v : catalogue.versions()) {
        if (v.fwVersion == fwVersion) {
            *version = v;
            return true;
        }
    }
    *error = QStringLiteral("firmware version \"%1\" is not in the catalogue of %2 (%3 versions); "
                            "give its layout with --layout")
                 .arg(fwVersion, QDir(ui::PATH_FW).absolutePath())
                 .arg(catalogue.size());
    if (!warnings.isEmpty()) {
        *error += QStringLiteral("\n  ") + warnings.join(QStringLiteral("\n  "));
    }
    return false;
}

bool SetupFile::versionFromLayout(const QString& layoutPath, const QString& fw, const QString& kxs,
                                  const QString& enq, QString* error) {
    if (!QFileInfo(layoutPath).isFile()) {
        *error = QStringLiteral("no layout file %1").arg(layoutPath);
        return false;
    }
    util::VersionContainer v;
    v.fwVersion = fw;
    v.kxsVersion = kxs;
    v.enqString = enq;
    v.kxsFilePath = QFileInfo(layoutPath).absoluteFilePath();
    m_version = v;
    return true;
}

bool SetupFile::resolve(const QString& name, SettingRef* ref, QString* error) const {
    static const QRegularExpression bitPattern(QStringLiteral("^(.+)\\[(\\d+)\\]$"));
    QString base = name;
    int subIndex = -1;
    const QRegularExpressionMatch m = bitPattern.match(name);
    if (m.hasMatch()) {
        base = m.captured(1);
        bool ok = false;
        subIndex = m.captured(2).toInt(&ok);
        if (!ok) {
            *error = QStringLiteral("%1: bad bit number").arg(name);
            return false;
        }
    }
    Setting* setting = m_manager->getSetting(base);
    if (!setting) {
        setting = m_manager->getSettingByWsi(base);
    }
    if (!setting && subIndex < 0) {
        // A bit by the help identifier of its label.
        for (Setting* s : m_manager->getSettings()) {
            const QList<BitLabel>* labels = s->bitLabels();
            for (int k = 0; labels && k < labels->size(); ++k) {
                if (!labels->at(k).wsi.isEmpty() && labels->at(k).wsi == base) {
                    ref->setting = s;
                    ref->subIndex = k;
                    return true;
                }
            }
        }
    }
    if (!setting) {
        *error = QStringLiteral("no setting \"%1\"").arg(base);
        return false;
    }
    if (subIndex >= 0) {
        const QList<BitLabel>* labels = setting->bitLabels();
        if (!labels) {
            *error = QStringLiteral("%1 is no bit field").arg(setting->getCodeName());
            return false;
        }
        if (subIndex >= labels->size()) {
            *error = QStringLiteral("%1 has bits 0 to %2, not %3")
                         .arg(setting->getCodeName())
                         .arg(labels->size() - 1)
                         .arg(subIndex);
            return false;
        }
    }
    ref->setting = setting;
    ref->subIndex = subIndex;
    return true;
}

bool SetupFile::saveTo(const QString& target, QString* error, bool reformat, bool onlyEnabled) {
    const QFileInfo info(target);
    QTemporaryFile temp(info.absolutePath() + QStringLiteral("/.") + info.fileName() +
                        QStringLiteral(".XXXXXX"));
    temp.setAutoRemove(false);
    QFile source(m_path);
    if (!temp.open() || !source.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("cannot write a file in %1").arg(info.absolutePath());
        return false;
    }
    const QString tempPath = temp.fileName();
    const bool copied = temp.write(source.readAll()) >= 0 && temp.flush();
    temp.close();
    source.close();
    const auto fail = [&](const QString& what) {
        QFile::remove(tempPath);
        *error = what;
        return false;
    };
    if (!copied) {
        return fail(QStringLiteral("cannot write a temporary file in %1").arg(info.absolutePath()));
    }
    // The whole address range, records replaced.
    if (!m_manager->writeAppendRawSettings(tempPath, reformat, onlyEnabled, true, 0, 0xFFFFFFFF)) {
        return fail(QStringLiteral("cannot write the settings"));
    }
    QFile written(tempPath);
    const QFile::Permissions permissions =
        info.exists() ? QFile(target).permissions()
                      : (QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser |
                         QFile::ReadGroup | QFile::ReadOther);
    written.setPermissions(permissions);
    if (std::rename(QFile::encodeName(tempPath).constData(),
                    QFile::encodeName(info.absoluteFilePath()).constData()) != 0) {
        return fail(QStringLiteral("cannot replace the file"));
    }
    return true;
}

} // namespace sf
