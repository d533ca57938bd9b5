#pragma once
// The material page of the main window: the object list, the material list,
// the templates, and the controls of the eighteen material properties.
#include <QWidget>

#include <array>

class QCheckBox;
class QComboBox;
class QFrame;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QScrollBar;

namespace gelvane {

class Session;
class ThumbnailCache;

class MaterialPage : public QWidget {
    Q_OBJECT
public:
    // The thumbnails are the pictures of list 0 of `thumbnails`.
    MaterialPage(Session &session, ThumbnailCache &thumbnails, QWidget *parent = nullptr);

    // Shows the session's object rows and material rows (View) with their states.
    void refresh();

    QComboBox *cmbFigures() const { return m_cmbFigures; }
    QListWidget *lstMaterials() const { return m_lstMaterials; }
    QPushButton *cmd(int index) const { return m_cmd[index]; }

signals:
    // The user chose a row of cmbFigures.
    void objectChosen(int row);
    // The page changed the session; the window redraws what depends on it.
    void sessionChanged();

private:
    void Build();
    QWidget *BuildListColumn();
    QWidget *BuildPropertyColumn();
    void cmbFigures_Click(int row);
    void lstMaterials_Click();
    // Choosing a selection group selects exactly its members' rows.
    void Combo2_Click(int row);
    // The list shows the page state's selection, without running the list's click.
    void ShowSelection();
    void ShowThumbnails();
    void SetMaterialControlsEnabled(bool enabled);

    Session &m_session;
    ThumbnailCache &m_thumbnails;
    QLabel *m_lblObject = nullptr;
    QComboBox *m_cmbFigures = nullptr;
    QLabel *m_lblMaterials = nullptr;
    QListWidget *m_lstMaterials = nullptr;
    QPushButton *m_cmdInvertSel = nullptr;
    QPushButton *m_cmdDeleteMaterials = nullptr;
    QPushButton *m_cmdNewMat = nullptr;
    QPushButton *m_cmdCreateMat = nullptr;
    QLabel *m_lblTemplate = nullptr;
    QComboBox *m_Combo1 = nullptr;
    QLabel *m_lblSelGroup = nullptr;
    QComboBox *m_Combo2 = nullptr;
    QPushButton *m_cmdEditTemplate = nullptr;
    QPushButton *m_cmdDelTemplate = nullptr;
    std::array<QPushButton *, 29> m_cmd{};
    std::array<QLineEdit *, 12> m_TXT{}; // TXT(0), the version box, stands on the save options page
    std::array<QScrollBar *, 7> m_SCR{};
    std::array<QFrame *, 4> m_SHP{};
    std::array<QLabel *, 4> m_imgThumb{};
    std::array<QLabel *, 4> m_lblThumb{};
    std::array<QLabel *, 18> m_lblOpen{};  // the labels of the enabled presentation
    std::array<QLabel *, 18> m_lblClose{}; // the labels of the disabled presentation
    QCheckBox *m_chkApplyTextures = nullptr;
    QCheckBox *m_chkMultiplyThroughLights = nullptr;
    QCheckBox *m_chkMultiplyThroughKdColor = nullptr;
    QCheckBox *m_chkTexture = nullptr;
};

} // namespace gelvane
