#pragma once
// frmFileInfo: the counts of the open file on three tabs, the file's comment as
// notes, and the button that writes the HTML report.
#include <QDialog>

class QComboBox;
class QLabel;
class QPlainTextEdit;

namespace gelvane {

class Session;
class ThumbnailCache;

class FileInfoWindow : public QDialog {
    Q_OBJECT
public:
    // Fills every label from the statistics of the open file. Throws Failure
    // ("File not found") when that file is no longer on disk.
    FileInfoWindow(Session &session, ThumbnailCache &thumbnails, QWidget *parent = nullptr);

private:
    QWidget *BuildGeneralTab();
    QWidget *BuildListsTab();
    QWidget *BuildNotesTab();
    void Form_Load();
    void cmbFigures_Click(int row);
    void cmbActors_Click(int row);
    void cmdOK_Click();

    Session &m_session;
    ThumbnailCache &m_thumbnails;
    QComboBox *m_cmbFigures = nullptr;
    QComboBox *m_cmbActors = nullptr;
    QLabel *m_lblMaterialsF = nullptr;
    QPlainTextEdit *m_txtNotes = nullptr;
};

// Shows frmFileInfo modally over `owner`; a file that can't be described is
// reported in an exclamation box instead.
void ShowFileInfoWindow(Session &session, ThumbnailCache &thumbnails, QWidget *owner);

} // namespace gelvane
