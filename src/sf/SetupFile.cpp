#include "SettingsSession.h"

#include "Command.h"

#include "app/Constants.h"
#include "sf/BoolSetting.h"
#include "sf/CheckBoolSetting.h"
#include "sf/Setting.h"
#include "sf/SettingManager.h"
#include "sf/WSISetting.h"
#include "sf/parser/HexParser.h"
#include "util/VersionCatalogue.h"
#include "util/VersionParser.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryFile>

#include <cstdio>

namespace cli {

namespace {

const QList<sf::BitLabel>* labelsOf(sf::Setting* setting) {
    if (auto* b = qobject_cast<sf::BoolSetting*>(setting)) {
        return &b->getLabels();
    }
    if (auto* c = qobject_cast<sf::CheckBoolSetting*>(setting)) {
        return &c->getLabels();
    }
    return nullptr;
}

QString loadErrorText(int code, const util::VersionContainer& version) {
    switch (code) {
    case sf::SettingManager::LoadLayoutFailed:
        return QStringLiteral("cannot open the layout file %1").arg(version.kxsFilePath);
    case sf::SettingManager::LoadImageFailed:
        return QStringLiteral("not a setup file, or corrupt or empty");
    case sf::SettingManager::LoadNoVersion:
        return QStringLiteral("the layout file %1 carries no version").arg(version.kxsFilePath);
    case sf::SettingManager::LoadVersionMismatch:
        return QStringLiteral("the file's versions differ from the layout's");
    default:
        return QStringLiteral("cannot load the settings (error %1)").arg(code);
    }
}

} // namespace

SettingsSession::SettingsSession() : m_manager(std::make_unique<sf::SettingManager>()) {
    QObject::connect(m_manager.get(), &sf::SettingManager::problem,
                     [this](const QString& message) { m_messages.append(message); });
}

SettingsSession::~SettingsSession() = default;

bool SettingsSession::open(const QString& path, const QString& layoutPath, QString* error) {
    m_path = path;
    m_messages.clear();
    m_problems = 0;
    if (!QFileInfo(path).isFile()) {
        *error = QStringLiteral("no such file");
        return false;
    }
    const bool found = layoutPath.isEmpty()
                           ? versionFromCatalogue(sf::parser::HexParser::getFwVersion(path), error)
                           : versionFromLayout(layoutPath, error);
    if (!found) {
        return false;
    }
    // As the file model opens a file: the processor kind from the layout version, and
    // the versions the image records are not checked.
    m_manager->set_processor_type(sf::SettingManager::processorTypeFor(
        m_version.kxsVersion, m_manager->get_processor_type()));
    const int result = m_manager->loadRawSettings(m_version, path, true);
    if (result < 0) {
        *error = loadErrorText(result, m_version);
        return false;
    }
    m_problems = result;
    return true;
}

bool SettingsSession::versionFromCatalogue(const QString& fwVersion, QString* error) {
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
            m_version = v;
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

bool SettingsSession::versionFromLayout(const QString& layoutPath, QString* error) {
    if (!QFileInfo(layoutPath).isFile()) {
        *error = QStringLiteral("no layout file %1").arg(layoutPath);
        return false;
    }
    util::VersionContainer v;
    v.fwVersion = sf::parser::HexParser::getFwVersion(m_path);
    v.kxsVersion = sf::parser::HexParser::getKxsVersion(m_path);
    v.enqString = sf::parser::HexParser::getEnqString(m_path);
    v.kxsFilePath = QFileInfo(layoutPath).absoluteFilePath();
    m_version = v;
    return true;
}

bool SettingsSession::resolve(const QString& name, SettingRef* ref, QString* error) const {
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
    sf::Setting* setting = m_manager->getSetting(base);
    if (!setting) {
        setting = m_manager->getSettingByWsi(base);
    }
    if (!setting && subIndex < 0) {
        // A bit by the help identifier of its label.
        for (sf::Setting* s : m_manager->getSettings()) {
            const QList<sf::BitLabel>* labels = labelsOf(s);
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
        const QList<sf::BitLabel>* labels = labelsOf(setting);
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

bool SettingsSession::saveTo(const QString& target, QString* error) {
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
    // As the application saves: whole range, reformatted, records replaced.
    if (!m_manager->writeAppendRawSettings(tempPath, true, false, true, 0, 0xFFFFFFFF)) {
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

void warnProblems(Context& ctx, const SettingsSession& session) {
    if (session.problems() > 0) {
        ctx.err << "kxsetup-cli: warning: " << session.path() << ": " << session.problems()
                << " settings could not be read\n";
    }
    for (const QString& message : session.messages()) {
        ctx.err << "kxsetup-cli: warning: " << session.path() << ": " << message << "\n";
    }
    ctx.err.flush();
}

} // namespace cli
