#include "gui/reports/ImportWindow.h"

#include "gui/WidgetText.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace gelvane {

ImportWindow::ImportWindow(QWidget *owner) : QDialog(owner) {
    setObjectName("frmImport");
    setWindowTitle("Import materials or morphs and poses");

    auto *fraDataType = Named(new QGroupBox("Data type", this), "fraDataType");
    auto *dataLayout = new QVBoxLayout(fraDataType);
    const char *dataCaptions[] = {"Materials", "Morphs and poses"};
    for (int i = 0; i < 2; ++i) {
        m_optDataType[i] = Named(new QRadioButton(dataCaptions[i], fraDataType), Indexed("optDataType", i));
        dataLayout->addWidget(m_optDataType[i]);
    }
    m_chkBody = Named(new QCheckBox("BODY actor only", fraDataType), "chkBody");
    auto *bodyRow = new QHBoxLayout;
    bodyRow->addSpacing(20);
    bodyRow->addWidget(m_chkBody);
    dataLayout->addLayout(bodyRow);
    const char *notes[] = {"Select \"Morphs and poses\" to import sub-dividing materials",
                           "The \"BODY actor only\" option applies only to character files"};
    for (int i = 0; i < 2; ++i) {
        auto *note = Named(new QLabel(notes[i], fraDataType), Indexed("lblDataTypeInfo", i));
        note->setWordWrap(true);
        dataLayout->addWidget(note);
    }
    dataLayout->addStretch(1);

    auto *fraFileType = Named(new QGroupBox("File type", this), "fraFileType");
    auto *fileLayout = new QGridLayout(fraFileType);
    for (int i = 0; i < kImportFileTypes; ++i) {
        m_optFileType[i] = Named(new QRadioButton(FileTypeCaption(i), fraFileType), Indexed("optFileType", i));
        fileLayout->addWidget(m_optFileType[i], i % 5, i / 5);
    }

    for (QRadioButton *option : m_optDataType)
        connect(option, &QRadioButton::clicked, this, [this] {
            readControls();
            refresh();
        });
    for (QRadioButton *option : m_optFileType)
        connect(option, &QRadioButton::clicked, this, [this] {
            readControls();
            refresh();
        });

    auto *cmdImport = Named(new QPushButton("Import", this), "cmdImport");
    auto *cmdCancel = Named(new QPushButton("Cancel", this), "cmdCancel");
    cmdImport->setDefault(true);
    connect(cmdImport, &QPushButton::clicked, this, [this] {
        readControls();
        accept();
    });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdImport);
    buttons->addWidget(cmdCancel);

    auto *layout = new QGridLayout(this);
    layout->addWidget(fraDataType, 0, 0);
    layout->addWidget(fraFileType, 0, 1);
    layout->addLayout(buttons, 1, 0, 1, 2);
    fraDataType->setFixedWidth(250);
    refresh();
}

void ImportWindow::readControls() {
    m_choice.optDataType = m_optDataType[1]->isChecked() ? 1 : 0;
    for (int i = 0; i < kImportFileTypes; ++i)
        if (m_optFileType[i]->isChecked())
            m_choice.optFileType = i;
    m_choice.chkBody = m_chkBody->isChecked();
    ApplyImportRules(m_choice);
}

void ImportWindow::refresh() {
    m_optDataType[m_choice.optDataType]->setChecked(true);
    m_optFileType[m_choice.optFileType]->setChecked(true);
    m_chkBody->setEnabled(chkBodyEnabled(m_choice));
    m_chkBody->setChecked(m_choice.chkBody);
}

void ShowImportWindow(Session &session, QWidget *owner, const FigureWindowOpener &showFigure) {
    ImportWindow window(owner);
    if (window.exec() != QDialog::Accepted)
        return;
    // The window is gone before the import asks for its file.
    RunImport(session, window.choice(), showFigure);
}

} // namespace gelvane
