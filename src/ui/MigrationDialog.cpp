#include "ui/MigrationDialog.h"

#include "app/Constants.h"
#include "firmware/Migration.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace ui {

namespace {

QString howText(firmware::MigrationRow::How how) {
    switch (how) {
    case firmware::MigrationRow::Kept:
        return QObject::tr("kept");
    case firmware::MigrationRow::Converted:
        return QObject::tr("converted");
    default:
        return QObject::tr("new default");
    }
}

} // namespace

MigrationDialog::MigrationDialog(const firmware::Migration& migration, const QString& oldVersion,
                                 const QString& newVersion, QWidget* parent)
    : QDialog(parent), m_table(new QTableWidget(this)) {
    setWindowTitle(TITLE_CONFIRM_UPDATE);
    auto* layout = new QVBoxLayout(this);
    auto* intro = new QLabel(this);
    intro->setWordWrap(true);
    if (migration.missing.isEmpty()) {
        intro->setText(tr("Every setting of firmware %1 has its place in %2: your settings are "
                          "kept. Update now?")
                           .arg(oldVersion, newVersion));
        layout->addWidget(intro);
    } else {
        const firmware::MergeMessage message =
            firmware::mergeMessage(migration.missing, oldVersion, newVersion);
        intro->setText(QString(message.text)
                           .replace(QStringLiteral("To see which settings will be set to defaults, "
                                                   "select \"Show Details\" below."),
                                    QStringLiteral("The settings that will be set to defaults "
                                                   "are listed below.")));
        auto* details = new QPlainTextEdit(message.details, this);
        details->setReadOnly(true);
        details->setMaximumHeight(110);
        layout->addWidget(intro);
        layout->addWidget(details);
    }
    const QStringList heads{tr("Setting"), tr("Firmware %1").arg(oldVersion),
                            tr("Firmware %1").arg(newVersion), tr("What happens")};
    m_table->setColumnCount(heads.size());
    m_table->setHorizontalHeaderLabels(heads);
    // What changes first, then what is kept, each in the new layout's order.
    QList<firmware::MigrationRow> rows = migration.rows;
    std::stable_partition(rows.begin(), rows.end(), [](const firmware::MigrationRow& r) {
        return r.how != firmware::MigrationRow::Kept;
    });
    m_table->setRowCount(static_cast<int>(rows.size()));
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->verticalHeader()->hide();
    for (int row = 0; row < rows.size(); ++row) {
        const firmware::MigrationRow& r = rows.at(row);
        const QStringList cells{QStringLiteral("%1 (%2)").arg(r.setting, r.key),
                                r.oldValue.isEmpty() ? tr("(none)") : r.oldValue, r.newValue,
                                howText(r.how)};
        for (int column = 0; column < cells.size(); ++column) {
            auto* item = new QTableWidgetItem(cells.at(column));
            if (r.how != firmware::MigrationRow::Kept) {
                QFont bold = item->font();
                bold.setBold(true);
                item->setFont(bold);
            }
            m_table->setItem(row, column, item);
        }
    }
    m_table->resizeColumnsToContents();
    m_table->horizontalHeader()->setStretchLastSection(true);
    layout->addWidget(m_table);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    buttons->addButton(tr("&Update"), QDialogButtonBox::AcceptRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    resize(760, 560);
}

int MigrationDialog::rows() const {
    return m_table->rowCount();
}

QString MigrationDialog::cell(int row, int column) const {
    const QTableWidgetItem* item = m_table->item(row, column);
    return item ? item->text() : QString();
}

} // namespace ui
