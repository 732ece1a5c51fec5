#include "ui/ComDialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace ui {

ComDialog::ComDialog(const QList<PortEntry>& ports, int /*index*/, const QString& lastPort,
                     const QString& title, QWidget* parent)
    : QDialog(parent), m_list(new QListWidget(this)), m_path(new QLineEdit(this)) {
    setWindowTitle(title);
    auto* intro = new QLabel(tr("Choose the serial port of the instrument's USB cable:"), this);
    for (const PortEntry& port : ports) {
        auto* item = new QListWidgetItem(util::portText(port), m_list);
        item->setData(Qt::UserRole, port.path);
    }
    if (ports.isEmpty()) {
        auto* none = new QListWidgetItem(tr("No serial ports found. Plug in the cable and press "
                                            "Refresh, or type the device path below."),
                                         m_list);
        none->setFlags(Qt::NoItemFlags);
    }
    auto* form = new QFormLayout;
    form->addRow(tr("Device path:"), m_path);
    m_path->setPlaceholderText(QStringLiteral("/dev/ttyUSB0"));

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_ok = buttons->button(QDialogButtonBox::Ok);
    QPushButton* refresh = buttons->addButton(tr("&Refresh"), QDialogButtonBox::ResetRole);
    QPushButton* check = buttons->addButton(tr("&Check connection"), QDialogButtonBox::ResetRole);
    check->setToolTip(tr("Find out why the instrument does not answer: the cable's adapter, "
                         "permissions, programs holding the port, and the instrument itself"));
    connect(check, &QPushButton::clicked, this, [this] { finishWith(PortAnswer::Check); });
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { finishWith(PortAnswer::Ok); });
    connect(buttons, &QDialogButtonBox::rejected, this, [this] { finishWith(PortAnswer::Cancel); });
    connect(refresh, &QPushButton::clicked, this, [this] { finishWith(PortAnswer::Refresh); });
    connect(m_list, &QListWidget::currentRowChanged, this, [this](int row) {
        if (QListWidgetItem* item = m_list->item(row); item && item->flags() != Qt::NoItemFlags) {
            m_path->setText(item->data(Qt::UserRole).toString());
        }
    });
    connect(m_list, &QListWidget::itemDoubleClicked, this, [this] {
        if (m_ok->isEnabled()) {
            finishWith(PortAnswer::Ok);
        }
    });
    connect(m_path, &QLineEdit::textChanged, this, &ComDialog::updateOk);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(intro);
    layout->addWidget(m_list);
    layout->addLayout(form);
    layout->addWidget(buttons);
    resize(520, 300);

    if (ports.isEmpty()) {
        m_path->setText(lastPort); // nothing listed: the port used last may still be there
    } else {
        m_list->setCurrentRow(util::preselectedPort(ports, lastPort));
    }
    updateOk();
}

QString ComDialog::chosenPort() const {
    return m_path->text().trimmed();
}

void ComDialog::updateOk() {
    m_ok->setEnabled(!chosenPort().isEmpty());
}

void ComDialog::finishWith(PortAnswer::Kind kind) {
    m_answer.kind = kind;
    m_answer.port = kind == PortAnswer::Ok || kind == PortAnswer::Check ? chosenPort() : QString();
    if (kind == PortAnswer::Ok) {
        accept();
    } else {
        reject();
    }
}

} // namespace ui
