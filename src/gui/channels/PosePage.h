#pragma once
// The morph and pose page of the main window: actors, their dials, the property
// panels, the thigh length and deletion of channels by type. Every handler calls one
// core function (core/channels) and redraws from the session.
#include <QWidget>

#include <array>
#include <functional>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace gelvane {

class Session;

class PosePage : public QWidget {
    Q_OBJECT
public:
    PosePage(Session &session, QWidget *parent = nullptr);

    // Draws session.Pose: rows, selection, texts and enabled states.
    void refresh();
    // The page's tab was chosen.
    void tabOpened();

    QTreeWidget *lstActors() const { return m_lstActors; }
    QTreeWidget *lstDials() const { return m_lstDials; }

signals:
    // A command changed the session beyond this page (save boxes, menus).
    void sessionChanged();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *BuildLists();
    QWidget *BuildActorPanel();
    QWidget *BuildDialPanel();
    QWidget *BuildThighLength();
    QWidget *BuildDeletePanel();
    // Runs a core command and redraws.
    void Run(const std::function<void()> &command);
    void ListClicked(QTreeWidget *list, QTreeWidgetItem *item);

    Session &m_session;
    QTreeWidget *m_lstActors = nullptr;
    QTreeWidget *m_lstDials = nullptr;
    QPushButton *m_cmdSelectAllActors = nullptr;
    QPushButton *m_cmdDeleteActors = nullptr;
    QPushButton *m_cmdSelectAllDials = nullptr;
    QPushButton *m_cmdDeleteDials = nullptr;
    QPushButton *m_cmdCreateDial = nullptr;
    QPushButton *m_cmdZerAll = nullptr;
    QPushButton *m_cmdDelChannels = nullptr;
    std::array<QLabel *, 7> m_lblActorProperty{};
    std::array<QCheckBox *, 7> m_chkEnable{};
    std::array<QPushButton *, 7> m_cmdApplyProperty{};
    std::array<QWidget *, 7> m_actorValue{}; // the value control of each actor panel row
    std::array<QLineEdit *, 2> m_txtActorProperties{};
    std::array<QComboBox *, 5> m_cmbActorProperties{};
    std::array<QLabel *, 3> m_lblDialProperty{};
    std::array<QCheckBox *, 3> m_chkEnableDial{};
    std::array<QPushButton *, 3> m_cmdApplyDial{};
    std::array<QWidget *, 3> m_dialValue{};
    std::array<QLineEdit *, 2> m_txtDialProperties{};
    QComboBox *m_cmbDialProperties = nullptr;
    QCheckBox *m_chkDisableThighLength = nullptr;
    QLineEdit *m_txtThighLength = nullptr;
    std::array<QCheckBox *, 23> m_chkDelChannels{};
    std::array<QPushButton *, 3> m_cmdCheckAll{};
};

} // namespace gelvane
