#include "gui/AboutWindow.h"

#include "core/platform/Interaction.h"
#include "gui/AppIcon.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace gelvane {

namespace {
constexpr int kVersionMajor = 3;
constexpr int kVersionMinor = 0;
constexpr int kVersionRevision = 0;
} // namespace

AboutWindow::AboutWindow(QWidget *parent) : QDialog(parent) {
    setObjectName("frmAbout");
    setWindowTitle(QString("About ") + kProgramTitle);
    setWindowIcon(AppIcon());

    auto *picIcon = new QLabel(this);
    picIcon->setObjectName("picIcon");
    picIcon->setPixmap(AppIcon().pixmap(48, 48));
    picIcon->setAlignment(Qt::AlignTop);

    auto *lblTitle = new QLabel(kProgramTitle, this);
    lblTitle->setObjectName("lblTitle");
    QFont titleFont = lblTitle->font();
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.6);
    titleFont.setBold(true);
    lblTitle->setFont(titleFont);

    auto *lblVersion =
        new QLabel(QString("Version %1.%2.%3").arg(kVersionMajor).arg(kVersionMinor).arg(kVersionRevision), this);
    lblVersion->setObjectName("lblVersion");

    auto *lblDescription =
        new QLabel("Edits the materials, morphs and poses of Poser library files and saves them as MAT poses.", this);
    lblDescription->setObjectName("lblDescription");
    lblDescription->setWordWrap(true);

    auto *Label4 = new QLabel("Picture decoding", this);
    Label4->setObjectName("Label4");
    QFont bold = Label4->font();
    bold.setBold(true);
    Label4->setFont(bold);
    auto *Label5 = new QLabel("Pictures are read with ImageMagick (Magick++).\n"
                              "Report pictures are written with ImageMagick as well.",
                              this);
    Label5->setObjectName("Label5");

    auto *cmdOK = new QPushButton("OK", this);
    cmdOK->setObjectName("cmdOK");
    cmdOK->setDefault(true);
    connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);

    auto *layout = new QGridLayout(this);
    layout->setContentsMargins(18, 18, 18, 14);
    layout->setHorizontalSpacing(16);
    layout->addWidget(picIcon, 0, 0, 4, 1);
    layout->addWidget(lblTitle, 0, 1);
    layout->addWidget(lblVersion, 1, 1);
    layout->addWidget(lblDescription, 2, 1);
    layout->addWidget(Label4, 3, 1);
    layout->addWidget(Label5, 4, 1);
    layout->addWidget(cmdOK, 5, 1, Qt::AlignRight);
    layout->setRowMinimumHeight(3, 28);
    setMinimumWidth(420);
}

} // namespace gelvane
