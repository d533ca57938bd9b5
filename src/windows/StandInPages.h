#pragma once
// Minimal material and morph/pose pages used until the full pages are built:
// they show the object list, the material list and the actor and dial lists
// from the session, with the controls the main window names.
#include <QWidget>

class QComboBox;
class QListWidget;

namespace gelvane {

class Session;

class StandInMaterialPage : public QWidget {
    Q_OBJECT
public:
    StandInMaterialPage(Session &session, QWidget *parent);
    void refresh();

signals:
    void sessionChanged();

private:
    Session &m_session;
    QComboBox *m_cmbFigures;
    QListWidget *m_lstMaterials;
};

class StandInPosePage : public QWidget {
    Q_OBJECT
public:
    StandInPosePage(Session &session, QWidget *parent);
    void refresh();

private:
    void showDials();

    Session &m_session;
    QListWidget *m_lstActors;
    QListWidget *m_lstDials;
};

} // namespace gelvane
