#pragma once
// The material page of the main window: the object list, the material list, the
// templates, and the controls of the eighteen material properties. Every handler makes
// one call into the core (core/materials) and redraws the page from the session.
#include <QFrame>
#include <QLineEdit>
#include <QWidget>

#include <array>

class QCheckBox;
class QComboBox;
class QLabel;
class QListWidget;
class QPushButton;
class QScrollBar;

namespace gelvane {

class Session;
class ThumbnailCache;

// A colour swatch (SHP) that takes clicks.
class Swatch : public QFrame {
    Q_OBJECT
public:
    explicit Swatch(QWidget *parent = nullptr);
    void setColor(const QColor &color);
signals:
    void clicked();

protected:
    void mouseReleaseEvent(QMouseEvent *event) override;
};

// A map path box that takes files dropped on it (only files).
class PathBox : public QLineEdit {
    Q_OBJECT
public:
    explicit PathBox(QWidget *parent = nullptr);
signals:
    void filesDropped(const QStringList &paths);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
};

class MaterialPage : public QWidget {
    Q_OBJECT
public:
    // The thumbnails are the pictures of list 0 of `thumbnails`.
    MaterialPage(Session &session, ThumbnailCache &thumbnails, QWidget *parent = nullptr);

    // Draws the page from the session: rows, selection, values, presentations, enabled states.
    void refresh();

    QComboBox *cmbFigures() const { return m_cmbFigures; }
    QListWidget *lstMaterials() const { return m_lstMaterials; }
    QPushButton *cmd(int index) const { return m_cmd[index]; }

signals:
    // The user chose a row of cmbFigures.
    void objectChosen(int row);
    // The page changed the session; the window redraws what depends on it.
    void sessionChanged();

protected:
    // The Materials tab came to the front: the shown material is drawn afresh.
    void showEvent(QShowEvent *event) override;
    // Double-clicks on the property labels.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void Build();
    QWidget *BuildListColumn();
    QWidget *BuildPropertyColumn();
    QWidget *BuildMapColumn();
    void Connect();
    // Runs a core handler and redraws the page; a handler that reaches beyond the page
    // (objects, menus, the save options) tells the window.
    template <class F> void Run(F handler, bool beyondThePage = false);
    void cmbFigures_Click(int row);
    void lstMaterials_Click();
    // Choosing a selection group selects exactly its members' rows.
    void Combo2_Click(int row);
    void cmdCreateMat_Click();
    void ShowList();
    void ShowProperties();
    void ShowTemplates();
    void ShowThumbnails();

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
    std::array<Swatch *, 4> m_SHP{};
    std::array<QLabel *, 4> m_imgThumb{};
    std::array<QLabel *, 4> m_lblThumb{};
    std::array<QLabel *, 18> m_lblOpen{};  // the labels of the enabled presentation
    std::array<QLabel *, 18> m_lblClose{}; // the labels of the disabled presentation
    std::array<QCheckBox *, 3> m_checks{}; // chkApplyTextures, chkMultiplyThroughLights, chkMultiplyThroughKdColor
    QCheckBox *m_chkTexture = nullptr;
};

} // namespace gelvane
