#include "editor/ListDialogLayout.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "editor/Prompts.h"

namespace autoscene::ui {

void layOutListDialog(QDialog& dialog, QListWidget& list, const std::vector<ListButton>& buttons) {
    auto* row = new QHBoxLayout;
    for (const ListButton& spec : buttons) {
        auto* button = new QPushButton(spec.text);
        button->setObjectName(QLatin1String(spec.objectName));
        QObject::connect(button, &QPushButton::clicked, &dialog, spec.clicked);
        row->addWidget(button);
    }
    row->addStretch();
    auto* close = new QDialogButtonBox(QDialogButtonBox::Close);
    close->button(QDialogButtonBox::Close)->setText(closeText());
    QObject::connect(close, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    row->addWidget(close);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(&list, 1);
    layout->addLayout(row);
}

}  // namespace autoscene::ui
