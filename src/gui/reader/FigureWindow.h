#pragma once
// frmFigure: the choice of one figure of a character file that holds several.
#include <QDialog>

#include <optional>
#include <string>
#include <vector>

class QComboBox;
class QRadioButton;

namespace gelvane {

class Session;

class FigureWindow : public QDialog {
    Q_OBJECT
public:
    // The figures in file order, by name and by geometry file name.
    FigureWindow(std::vector<std::string> figureNames, std::vector<std::string> geometryNames,
                 QWidget *parent = nullptr);

    // The chosen line of cmbFigure (0-based), -1 when there is none.
    int selectedFigure() const;
    QComboBox *cmbFigure() const { return m_cmbFigure; }
    // Fills cmbFigure from the names (true) or the geometry files (false), keeping the line.
    void ListFigures(bool byName);

protected:
    // With fewer than two lines there is nothing to choose: OK presses itself.
    void showEvent(QShowEvent *event) override;

private:
    std::vector<std::string> m_figureNames;
    std::vector<std::string> m_geometryNames;
    QComboBox *m_cmbFigure = nullptr;
    QRadioButton *m_optName = nullptr;
    QRadioButton *m_optGeom = nullptr;
    bool m_activated = false;
};

// Shows frmFigure modally over `parent` with the figures of a file; the chosen
// line, or nothing when the window was closed without OK. With fewer than two
// figures the window takes the first one without waiting for the user.
std::optional<int> ChooseFigure(QWidget *parent, const std::vector<std::string> &figureNames,
                                const std::vector<std::string> &geometryNames);

// The figure selection of the character in session.DialogFileName: lists its
// figures, lets the user choose through frmFigure when there are several, and
// opens the chosen one (materials, then the channel question).
void ShowFigureWindow(Session &session, QWidget *parent);

} // namespace gelvane
