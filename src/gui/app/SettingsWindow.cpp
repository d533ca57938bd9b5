#include "gui/app/SettingsWindow.h"

#include "core/app/Associations.h"
#include "core/model/Session.h"
#include "gui/AppIcon.h"
#include "gui/WidgetText.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace gelvane {

SettingsWindow::SettingsWindow(Settings &settings, Session &session, QWidget *parent, AssociationCalls calls)
    : QDialog(parent), m_settings(settings), m_session(session), m_calls(std::move(calls)) {
    setObjectName("frmSettings");
    setWindowTitle("Gelvane preferences");
    setWindowIcon(AppIcon());

    m_TabStrip1 = Named(new QTabWidget(this), "TabStrip1");
    m_TabStrip1->addTab(BuildFolders(), "Default Folders");
    m_TabStrip1->addTab(BuildAssociations(), "File Associations");
    m_TabStrip1->addTab(BuildGeneral(), "General");

    auto *cmdOK = Named(new QPushButton("OK", this), "cmdOK");
    auto *cmdCancel = Named(new QPushButton("Cancel", this), "cmdCancel");
    cmdOK->setDefault(true);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_TabStrip1, 1);
    layout->addLayout(buttons);
    connect(cmdOK, &QPushButton::clicked, this, &SettingsWindow::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);

    m_form = LoadPreferences(m_settings, m_calls);
    Show(m_form);
}

QWidget *SettingsWindow::BuildFolders() {
    auto *page = Named(new QWidget, "picOption_0");
    auto *grid = new QGridLayout(page);
    for (int i = 0; i < 11; ++i) {
        const FolderRow &row = FolderRows()[static_cast<size_t>(i)];
        m_TXT[static_cast<size_t>(i)] = Named(new QLineEdit(page), Indexed("TXT", i), row.BoxTip);
        m_TXT[static_cast<size_t>(i)]->setMinimumWidth(380);
        auto *browse = Named(new QPushButton("Browse...", page), Indexed("Browse", i), row.ButtonTip);
        grid->addWidget(Named(new QLabel(row.Label, page), Indexed("lblFolder", i)), i, 0);
        grid->addWidget(m_TXT[static_cast<size_t>(i)], i, 1);
        grid->addWidget(browse, i, 2);
        connect(browse, &QPushButton::clicked, this, [this, i] { Browse_Click(i); });
    }
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(11, 1);
    return page;
}

QWidget *SettingsWindow::BuildAssociations() {
    auto *page = Named(new QWidget, "picOption_1");
    auto *frame = new QGroupBox("Associate these file types with Gelvane", page);
    auto *grid = new QGridLayout(frame);
    grid->setVerticalSpacing(6);
    for (int i = 0; i < 8; ++i) {
        const AssociationKind &kind = AssociationKinds()[static_cast<size_t>(i)];
        const QString ext = QString(kind.Extension).mid(1);
        m_chkAs[static_cast<size_t>(i)] =
            Named(new QCheckBox(frame), Indexed("chkAs", i),
                  QString("Check if you want to associate %1 files with Gelvane").arg(kind.Word));
        auto *img = Named(new QLabel(frame), "img" + ext.toUpper());
        img->setPixmap(QIcon(":/icons/" + QString(kind.MimeType).replace('/', '-') + ".svg").pixmap(32, 32));
        auto *label = Named(new QLabel(QString("%1 files (*.%2)").arg(kind.Word, ext), frame), "lblAs" + ext.toUpper());
        label->setBuddy(m_chkAs[static_cast<size_t>(i)]);
        grid->addWidget(m_chkAs[static_cast<size_t>(i)], i, 0);
        grid->addWidget(img, i, 1);
        grid->addWidget(label, i, 2);
    }
    grid->setColumnStretch(2, 1);
    auto *v = new QVBoxLayout(page);
    v->addWidget(frame);
    v->addStretch(1);
    return page;
}

QWidget *SettingsWindow::BuildGeneral() {
    auto *page = Named(new QWidget, "picOption_2");
    auto *v = new QVBoxLayout(page);
    const auto check = [&](const char *name, const char *caption, const char *tip = "") {
        auto *box = Named(new QCheckBox(caption, page), name, tip);
        return box;
    };
    m_chkThumbDialog = check("chkThumbDialog", "Enable thumbnails in 'open file' dialogs");
    m_chkThumbMap = check("chkThumbMap", "Enable thumbnails in 'open map' dialogs");
    m_chkThumbMain = check("chkThumbMain", "Enable thumbnails in main window");
    m_chkAutoCorrect = check("chkAutoCorrect", " Automatically correct false map paths");
    m_chkNOMAP = check("chkNOMAP", "If map file isn't found, insert 'NO_MAP'",
                       "Incorrect map references are replaced with \"NO_MAP\"");
    for (QCheckBox *box : {m_chkThumbDialog, m_chkThumbMap, m_chkThumbMain, m_chkAutoCorrect, m_chkNOMAP})
        v->addWidget(box);

    const auto versionRow = [&](QCheckBox *&box, QLineEdit *&text, const char *boxName, const char *textName,
                                const char *caption, const char *tip) {
        box = check(boxName, caption, tip);
        text = Named(new QLineEdit(page), textName);
        text->setMaximumWidth(70);
        auto *row = new QHBoxLayout;
        row->addWidget(box);
        row->addWidget(text);
        row->addStretch(1);
        v->addLayout(row);
        connect(box, &QCheckBox::toggled, text, &QWidget::setEnabled);
    };
    versionRow(m_chkVersion, m_txtVersion, "chkVersion", "txtVersion", " Poser version for all P4/PP files:",
               "If checked this version number will be used with all P4/PP files");
    versionRow(m_chkP5Version, m_txtP5Version, "chkP5Version", "txtP5Version",
               " Poser version for all P5 files:", "If checked this version number will be used with all P5 files");

    const auto frame = [&](const char *name, const char *caption, QRadioButton *&first, const char *firstName,
                           const char *firstCaption, QRadioButton *&second, const char *secondName,
                           const char *secondCaption) {
        auto *box = Named(new QGroupBox(caption, page), name);
        auto *h = new QHBoxLayout(box);
        first = Named(new QRadioButton(firstCaption, box), firstName);
        second = Named(new QRadioButton(secondCaption, box), secondName);
        h->addWidget(first);
        h->addWidget(second);
        h->addStretch(1);
        return box;
    };
    auto *frames = new QHBoxLayout;
    frames->addWidget(frame("fraFileFormat", "Default file format", m_optPoser4, "optPoser4", " Poser 4/Pro Pack",
                            m_optPoser5, "optPoser5", " Poser 5"));
    frames->addWidget(frame("fraFileSystem", "Default file system", m_optDOS, "optDOS", " DOS/Windows", m_optUNIX,
                            "optUNIX", " UNIX/Macintosh"));
    v->addLayout(frames);

    m_chkReportTime = check("chkReportTime", "Report time used to load morphs and poses",
                            "A message box is displayed when morphs and poses have been loaded");
    m_chkDisableProperties =
        check("chkDisableProperties", "Disable actor's and channel's properties (other than dial values) by default",
              "Disable properties like \"hidden\" and \"locked\". In most cases this should be checked");
    v->addWidget(m_chkReportTime);
    v->addWidget(m_chkDisableProperties);

    auto *templateRow = new QHBoxLayout;
    m_cmbTemplate =
        Named(new QComboBox(page), "cmbTemplate", "This material selection template will be loaded by default");
    m_cmbTemplate->setMinimumWidth(200);
    auto *lblTemplate = Named(new QLabel("Default selection template:", page), "lblTemplate");
    lblTemplate->setBuddy(m_cmbTemplate);
    templateRow->addWidget(lblTemplate);
    templateRow->addWidget(m_cmbTemplate);
    templateRow->addStretch(1);
    v->addLayout(templateRow);
    v->addStretch(1);

    connect(m_chkAutoCorrect, &QCheckBox::toggled, m_chkNOMAP, &QWidget::setEnabled);
    connect(m_chkThumbMain, &QCheckBox::clicked, this,
            [this] { chkThumbMain_Click(Read(), m_settings, m_session.ui()); });
    return page;
}

void SettingsWindow::Show(const PreferencesForm &form) {
    for (size_t i = 0; i < m_TXT.size(); ++i)
        m_TXT[i]->setText(Latin1(form.TXT[i]));
    for (size_t i = 0; i < m_chkAs.size(); ++i)
        m_chkAs[i]->setChecked(form.chkAs[i]);
    m_chkThumbDialog->setChecked(form.chkThumbDialog);
    m_chkThumbMap->setChecked(form.chkThumbMap);
    m_chkThumbMain->setChecked(form.chkThumbMain);
    m_chkAutoCorrect->setChecked(form.chkAutoCorrect);
    m_chkNOMAP->setChecked(form.chkNOMAP);
    m_chkNOMAP->setEnabled(form.chkNOMAPEnabled());
    m_chkVersion->setChecked(form.chkVersion);
    m_txtVersion->setText(Latin1(form.txtVersion));
    m_txtVersion->setEnabled(form.txtVersionEnabled());
    m_chkP5Version->setChecked(form.chkP5Version);
    m_txtP5Version->setText(Latin1(form.txtP5Version));
    m_txtP5Version->setEnabled(form.txtP5VersionEnabled());
    (form.optPoser4 ? m_optPoser4 : m_optPoser5)->setChecked(true);
    (form.optDOS ? m_optDOS : m_optUNIX)->setChecked(true);
    m_chkReportTime->setChecked(form.chkReportTime);
    m_chkDisableProperties->setChecked(form.chkDisableProperties);
    m_cmbTemplate->clear();
    for (const std::string &name : form.cmbTemplate)
        m_cmbTemplate->addItem(Latin1(name));
    m_cmbTemplate->setCurrentIndex(form.cmbTemplateIndex);
    m_cmbTemplate->setEnabled(form.cmbTemplateEnabled());
}

PreferencesForm SettingsWindow::Read() const {
    PreferencesForm form = m_form;
    for (size_t i = 0; i < m_TXT.size(); ++i)
        form.TXT[i] = m_TXT[i]->text().toLatin1().toStdString();
    for (size_t i = 0; i < m_chkAs.size(); ++i)
        form.chkAs[i] = m_chkAs[i]->isChecked();
    form.chkThumbDialog = m_chkThumbDialog->isChecked();
    form.chkThumbMap = m_chkThumbMap->isChecked();
    form.chkThumbMain = m_chkThumbMain->isChecked();
    form.chkAutoCorrect = m_chkAutoCorrect->isChecked();
    form.chkNOMAP = m_chkNOMAP->isChecked();
    form.chkVersion = m_chkVersion->isChecked();
    form.txtVersion = m_txtVersion->text().toLatin1().toStdString();
    form.chkP5Version = m_chkP5Version->isChecked();
    form.txtP5Version = m_txtP5Version->text().toLatin1().toStdString();
    form.optPoser4 = m_optPoser4->isChecked();
    form.optDOS = m_optDOS->isChecked();
    form.chkReportTime = m_chkReportTime->isChecked();
    form.chkDisableProperties = m_chkDisableProperties->isChecked();
    form.cmbTemplateIndex = m_cmbTemplate->currentIndex();
    return form;
}

void SettingsWindow::Browse_Click(int row) {
    PreferencesForm form = Read();
    gelvane::Browse_Click(form, row, m_settings, m_session.ui());
    for (size_t i = 0; i < m_TXT.size(); ++i)
        m_TXT[i]->setText(Latin1(form.TXT[i]));
}

void SettingsWindow::cmdOK_Click() {
    gelvane::cmdOK_Click(Read(), m_settings, m_session.View, m_calls, m_session.ui());
    accept();
}

} // namespace gelvane
