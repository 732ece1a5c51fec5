#include "ui/DifferencesDialog.h"

#include "sf/Setting.h"
#include "sf/SetupComparison.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

namespace ui {

namespace {

QString settingName(const sf::Difference& d) {
    QString name = d.label.isEmpty() ? d.nameA : QStringLiteral("%1: %2").arg(d.nameA, d.label);
    if (!d.wsi.isEmpty()) {
        name += QStringLiteral(" (%1)").arg(d.wsi);
    }
    return name;
}

QStringList codeNames(const QList<sf::Setting*>& settings) {
    QStringList names;
    for (const sf::Setting* s : settings) {
        names << s->getCodeName();
    }
    return names;
}

} // namespace

DifferencesDialog::DifferencesDialog(const sf::Comparison& comparison, const QString& fileTitle,
                                     QWidget* parent)
    : QDialog(parent), m_table(new QTableWidget(this)) {
    setWindowTitle(tr("Compare with Korvex"));
    const int count = static_cast<int>(comparison.differ.size());
    auto* summary = new QLabel(this);
    summary->setWordWrap(true);
    summary->setText(
        count == 0
            ? tr("The Korvex holds the same settings as \"%1\".").arg(fileTitle)
            : tr("%n setting(s) of \"%1\" differ from the Korvex.", nullptr, count).arg(fileTitle));
    m_table->setColumnCount(3);
    m_table->setHorizontalHeaderLabels(
        {tr("Setting"), tr("In %1").arg(fileTitle), tr("On the Korvex")});
    m_table->setRowCount(count);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->verticalHeader()->hide();
    for (int row = 0; row < count; ++row) {
        const sf::Difference& d = comparison.differ.at(row);
        m_table->setItem(row, 0, new QTableWidgetItem(settingName(d)));
        m_table->setItem(row, 1, new QTableWidgetItem(d.from));
        m_table->setItem(row, 2, new QTableWidgetItem(d.to));
    }
    m_table->resizeColumnsToContents();
    m_table->horizontalHeader()->setStretchLastSection(true);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(summary);
    layout->addWidget(m_table);
    if (!comparison.onlyA.isEmpty() || !comparison.onlyB.isEmpty()) {
        auto* only = new QLabel(this);
        only->setWordWrap(true);
        QStringList lines;
        if (!comparison.onlyA.isEmpty()) {
            lines << tr("Only in the file: %1")
                         .arg(codeNames(comparison.onlyA).join(QStringLiteral(", ")));
        }
        if (!comparison.onlyB.isEmpty()) {
            lines << tr("Only on the Korvex: %1")
                         .arg(codeNames(comparison.onlyB).join(QStringLiteral(", ")));
        }
        only->setText(lines.join(QLatin1Char('\n')));
        layout->addWidget(only);
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::accept);
    layout->addWidget(buttons);
    resize(640, 420);
}

int DifferencesDialog::rows() const {
    return m_table->rowCount();
}

QString DifferencesDialog::cell(int row, int column) const {
    const QTableWidgetItem* item = m_table->item(row, column);
    return item ? item->text() : QString();
}

} // namespace ui
