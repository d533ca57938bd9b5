#include "gui/reader/FigureWindow.h"

#include "core/app/OpenCommands.h"
#include "gui/WidgetText.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

namespace gelvane {

FigureWindow::FigureWindow(std::vector<std::string> figureNames, std::vector<std::string> geometryNames,
                           QWidget *parent)
    : QDialog(parent), m_figureNames(std::move(figureNames)), m_geometryNames(std::move(geometryNames)) {
    setObjectName("frmFigure");
    setWindowTitle("Select Figure");
    auto *grid = new QGridLayout(this);
    auto *lblFigure = new QLabel("Select figure", this);
    lblFigure->setObjectName("lblFigure");
    m_cmbFigure = new QComboBox(this);
    m_cmbFigure->setObjectName("cmbFigure");
    m_cmbFigure->setMinimumWidth(260);
    auto *label2 = new QLabel("List figures by:", this);
    label2->setObjectName("Label2");
    m_optName = new QRadioButton(this);
    m_optName->setObjectName("optName");
    auto *lblByName = new QLabel("Figure's name", this);
    lblByName->setObjectName("lblByName");
    lblByName->setBuddy(m_optName);
    m_optGeom = new QRadioButton("Geometry file", this);
    m_optGeom->setObjectName("optGeom");
    auto *cmdOK = new QPushButton("OK", this);
    cmdOK->setObjectName("cmdOK");
    cmdOK->setDefault(true);

    grid->addWidget(lblFigure, 0, 0, 1, 3);
    grid->addWidget(m_cmbFigure, 1, 0, 1, 3);
    grid->addWidget(label2, 2, 0, 1, 3);
    auto *byName = new QHBoxLayout;
    byName->setSpacing(2);
    byName->addWidget(m_optName);
    byName->addWidget(lblByName);
    byName->addStretch(1);
    grid->addLayout(byName, 3, 0);
    grid->addWidget(m_optGeom, 3, 1);
    grid->addWidget(cmdOK, 4, 2);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);

    m_optName->setChecked(true);
    ListFigures(true);
    connect(m_optName, &QRadioButton::toggled, this, [this](bool on) {
        if (on)
            ListFigures(true);
    });
    connect(m_optGeom, &QRadioButton::toggled, this, [this](bool on) {
        if (on)
            ListFigures(false);
    });
    connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
}

void FigureWindow::ListFigures(bool byName) {
    const int row = m_cmbFigure->currentIndex();
    m_cmbFigure->clear();
    for (const std::string &name : byName ? m_figureNames : m_geometryNames)
        m_cmbFigure->addItem(Latin1(name));
    if (m_cmbFigure->count() > 0)
        m_cmbFigure->setCurrentIndex(row >= 0 && row < m_cmbFigure->count() ? row : 0);
}

int FigureWindow::selectedFigure() const {
    return m_cmbFigure->currentIndex();
}

std::optional<int> ChooseFigure(QWidget *parent, const std::vector<std::string> &figureNames,
                                const std::vector<std::string> &geometryNames) {
    FigureWindow window(figureNames, geometryNames, parent);
    if (window.exec() != QDialog::Accepted || window.selectedFigure() < 0)
        return std::nullopt;
    return window.selectedFigure();
}

void ShowFigureWindow(Session &session, QWidget *parent) {
    RunFigureSelection(session, [parent](Session &, const FigureList &list) {
        return ChooseFigure(parent, list.FigureNames, list.GeometryNames);
    });
}

void FigureWindow::showEvent(QShowEvent *event) {
    QDialog::showEvent(event);
    if (!m_activated && m_cmbFigure->count() < 2) {
        m_activated = true;
        QTimer::singleShot(0, this, &QDialog::accept);
    }
    m_activated = true;
}

} // namespace gelvane
