#include "gui/reports/FileInfoWindow.h"

#include "core/model/Session.h"
#include "core/platform/Failure.h"
#include "core/platform/Interaction.h"
#include "core/reports/FileInfo.h"
#include "core/reports/HtmlReport.h"
#include "gui/WidgetText.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace gelvane {
namespace {

// A value label beside its caption; the value can be selected and copied.
QLabel *AddValueRow(QFormLayout *form, const QString &caption, const QString &name) {
    auto *value = Named(new QLabel(kNotAvailable), name);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    form->addRow(caption, value);
    return value;
}

QFormLayout *NewForm(QWidget *parent) {
    auto *form = new QFormLayout(parent);
    form->setLabelAlignment(Qt::AlignLeft);
    form->setHorizontalSpacing(24);
    form->setVerticalSpacing(6);
    return form;
}

} // namespace

FileInfoWindow::FileInfoWindow(Session &session, ThumbnailCache &thumbnails, QWidget *parent)
    : QDialog(parent), m_session(session), m_thumbnails(thumbnails) {
    setObjectName("frmFileInfo");
    setWindowTitle("File Information");
    setMinimumWidth(420);

    auto *tabs = Named(new QTabWidget(this), "TabStrip1");
    tabs->addTab(BuildGeneralTab(), "General");
    tabs->setTabToolTip(0, "Information about the file");
    tabs->addTab(BuildListsTab(), "Figures and actors");
    tabs->setTabToolTip(1, "Information about each figure and actor");
    tabs->addTab(BuildNotesTab(), "Notes");

    auto *cmdCreateHTML = Named(new QPushButton("Save info as HTML", this), "cmdCreateHTML");
    auto *cmdOK = Named(new QPushButton("OK", this), "cmdOK");
    cmdOK->setDefault(true);
    connect(cmdCreateHTML, &QPushButton::clicked, this, [this] { cmdCreateHTML_Click(m_session, m_thumbnails); });
    connect(cmdOK, &QPushButton::clicked, this, &FileInfoWindow::cmdOK_Click);

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdCreateHTML);
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(tabs, 1);
    layout->addLayout(buttons);

    Form_Load();
}

QWidget *FileInfoWindow::BuildGeneralTab() {
    auto *page = new QWidget;
    page->setObjectName("picOption_0");
    QFormLayout *form = NewForm(page);
    AddValueRow(form, "File Name:", "lblFileName");
    AddValueRow(form, "File Type:", "lblFileType");
    AddValueRow(form, "File Size:", "lblSize");
    AddValueRow(form, "Objects:", "lblFigures");
    AddValueRow(form, "Actors (body parts):", "lblActors");
    AddValueRow(form, "Materials:", "lblMaterials");
    AddValueRow(form, "Sub-divided materials:", "lblSdMats");
    AddValueRow(form, "Actor and prop channels:", "lblChannels");
    AddValueRow(form, "Pose channels:", "lblPose");
    AddValueRow(form, "Morph channels:", "lblMorph");
    AddValueRow(form, "Null channels:", "lblNull");
    AddValueRow(form, "Texture maps:", "lblTexture");
    AddValueRow(form, "Bump maps:", "lblBump");
    AddValueRow(form, "Reflection maps:", "lblReflection");
    AddValueRow(form, "Transparency maps:", "lblTransparency");
    return page;
}

QWidget *FileInfoWindow::BuildListsTab() {
    auto *page = new QWidget;
    page->setObjectName("picOption_1");

    auto *fraFigures = Named(new QGroupBox("Figure information", page), "fraFigures");
    auto *figures = new QVBoxLayout(fraFigures);
    m_cmbFigures = Named(new QComboBox(fraFigures), "cmbFigures");
    figures->addWidget(m_cmbFigures);
    QFormLayout *figureForm = NewForm(nullptr);
    m_lblMaterialsF = AddValueRow(figureForm, "Materials:", "lblMaterialsF");
    figures->addLayout(figureForm);

    auto *fraActors = Named(new QGroupBox("Actor and prop information", page), "fraActors");
    auto *actors = new QVBoxLayout(fraActors);
    m_cmbActors = Named(new QComboBox(fraActors), "cmbActors");
    actors->addWidget(m_cmbActors);
    QFormLayout *actorForm = NewForm(nullptr);
    AddValueRow(actorForm, "Materials:", "lblMaterialsA");
    AddValueRow(actorForm, "Channels:", "lblChannelsA");
    AddValueRow(actorForm, "Pose channels:", "lblPoseA");
    AddValueRow(actorForm, "Morph channels:", "lblMorphA");
    AddValueRow(actorForm, "Null channels:", "lblNullA");
    actors->addLayout(actorForm);

    // The numbers of both frames stand in one column.
    int captionWidth = 0;
    for (QFormLayout *form : {figureForm, actorForm})
        for (int row = 0; row < form->rowCount(); ++row)
            captionWidth = std::max(captionWidth, form->itemAt(row, QFormLayout::LabelRole)->sizeHint().width());
    for (QFormLayout *form : {figureForm, actorForm})
        for (int row = 0; row < form->rowCount(); ++row)
            form->itemAt(row, QFormLayout::LabelRole)->widget()->setMinimumWidth(captionWidth);

    auto *layout = new QVBoxLayout(page);
    layout->addWidget(fraFigures);
    layout->addWidget(fraActors);
    layout->addStretch(1);

    connect(m_cmbFigures, &QComboBox::currentIndexChanged, this, &FileInfoWindow::cmbFigures_Click);
    connect(m_cmbActors, &QComboBox::currentIndexChanged, this, &FileInfoWindow::cmbActors_Click);
    return page;
}

QWidget *FileInfoWindow::BuildNotesTab() {
    auto *page = new QWidget;
    page->setObjectName("picOption_2");
    auto *layout = new QVBoxLayout(page);
    layout->addWidget(Named(new QLabel("Here you can write notes concerning this file", page), "lblNotes"));
    m_txtNotes = Named(new QPlainTextEdit(page), "txtNotes");
    layout->addWidget(m_txtNotes, 1);
    return page;
}

void FileInfoWindow::Form_Load() {
    const FileInfoTexts t = FileInfoOf(m_session);
    const std::pair<const char *, const std::string *> labels[] = {
        {"lblFileName", &t.lblFileName},
        {"lblFileType", &t.lblFileType},
        {"lblSize", &t.lblSize},
        {"lblFigures", &t.lblFigures},
        {"lblActors", &t.lblActors},
        {"lblMaterials", &t.lblMaterials},
        {"lblSdMats", &t.lblSdMats},
        {"lblChannels", &t.lblChannels},
        {"lblPose", &t.lblPose},
        {"lblMorph", &t.lblMorph},
        {"lblNull", &t.lblNull},
        {"lblTexture", &t.lblTexture},
        {"lblBump", &t.lblBump},
        {"lblReflection", &t.lblReflection},
        {"lblTransparency", &t.lblTransparency},
    };
    for (const auto &[name, text] : labels)
        findChild<QLabel *>(name)->setText(Latin1(*text));
    // A long name is cut at the window's edge rather than widening it; the tip shows it whole.
    auto *lblFileName = findChild<QLabel *>("lblFileName");
    lblFileName->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    lblFileName->setToolTip(lblFileName->text());

    const QSignalBlocker figuresQuiet(m_cmbFigures);
    const QSignalBlocker actorsQuiet(m_cmbActors);
    for (const std::string &row : t.cmbFigures)
        m_cmbFigures->addItem(Latin1(row));
    for (const std::string &row : t.cmbActors)
        m_cmbActors->addItem(Latin1(row));
    m_cmbActors->setEnabled(t.cmbActorsEnabled);
    m_cmbFigures->setCurrentIndex(0);
    cmbFigures_Click(0);
    m_cmbActors->setCurrentIndex(t.cmbActorsEnabled ? 0 : -1);
    cmbActors_Click(0);

    m_txtNotes->setPlainText(Latin1(NotesOfComment(m_session.FileComment)));
}

void FileInfoWindow::cmbFigures_Click(int row) {
    m_lblMaterialsF->setText(Latin1(FigureRowText(m_session.FileStatistics, row)));
}

void FileInfoWindow::cmbActors_Click(int row) {
    const ActorRowTexts t = ActorRowOf(m_session.FileStatistics, row);
    findChild<QLabel *>("lblMaterialsA")->setText(Latin1(t.lblMaterialsA));
    findChild<QLabel *>("lblChannelsA")->setText(Latin1(t.lblChannelsA));
    findChild<QLabel *>("lblPoseA")->setText(Latin1(t.lblPoseA));
    findChild<QLabel *>("lblMorphA")->setText(Latin1(t.lblMorphA));
    findChild<QLabel *>("lblNullA")->setText(Latin1(t.lblNullA));
}

void FileInfoWindow::cmdOK_Click() {
    StoreNotes(m_session, m_txtNotes->toPlainText().toLatin1().toStdString());
    accept();
}

void ShowFileInfoWindow(Session &session, ThumbnailCache &thumbnails, QWidget *owner) {
    try {
        FileInfoWindow window(session, thumbnails, owner);
        window.exec();
    } catch (const Failure &failure) {
        session.ui().MessageBox(failure.Description + ", error number " + std::to_string(failure.Number), kProgramTitle,
                                MsgIcon::Exclamation);
    }
}

} // namespace gelvane
