#pragma once
// frmSettings, "Gelvane preferences": default folders, file associations and the
// general options. The rules live in the core's preferences form; this window shows
// it, and OK hands it back.
#include "core/app/Preferences.h"

#include <QDialog>

#include <array>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QRadioButton;
class QTabWidget;

namespace gelvane {

class Session;

class SettingsWindow : public QDialog {
    Q_OBJECT
public:
    SettingsWindow(Settings &settings, Session &session, QWidget *parent = nullptr,
                   AssociationCalls calls = DesktopAssociations());

    QTabWidget *tabs() const { return m_TabStrip1; }

private:
    QWidget *BuildFolders();
    QWidget *BuildAssociations();
    QWidget *BuildGeneral();
    void Show(const PreferencesForm &form);
    PreferencesForm Read() const;
    void Browse_Click(int row);
    void cmdOK_Click();

    Settings &m_settings;
    Session &m_session;
    AssociationCalls m_calls;
    PreferencesForm m_form; // as loaded; the controls hold the edits
    QTabWidget *m_TabStrip1 = nullptr;
    std::array<QLineEdit *, 11> m_TXT{};
    std::array<QCheckBox *, 8> m_chkAs{};
    QCheckBox *m_chkThumbDialog = nullptr;
    QCheckBox *m_chkThumbMap = nullptr;
    QCheckBox *m_chkThumbMain = nullptr;
    QCheckBox *m_chkAutoCorrect = nullptr;
    QCheckBox *m_chkNOMAP = nullptr;
    QCheckBox *m_chkVersion = nullptr;
    QLineEdit *m_txtVersion = nullptr;
    QCheckBox *m_chkP5Version = nullptr;
    QLineEdit *m_txtP5Version = nullptr;
    QRadioButton *m_optPoser4 = nullptr;
    QRadioButton *m_optPoser5 = nullptr;
    QRadioButton *m_optDOS = nullptr;
    QRadioButton *m_optUNIX = nullptr;
    QCheckBox *m_chkReportTime = nullptr;
    QCheckBox *m_chkDisableProperties = nullptr;
    QComboBox *m_cmbTemplate = nullptr;
};

} // namespace gelvane
