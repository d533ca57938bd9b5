#pragma once
// The choice among several files that match a missing map: one row per candidate and
// "NO_MAP" as the last row, with a thumbnail and what is known of the selected file.
#include "core/platform/Interaction.h"

#include <QDialog>

#include <string>
#include <vector>

class QCheckBox;
class QComboBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace gelvane {

class ThumbnailCache;

class ChoosePicWindow : public QDialog {
    Q_OBJECT
public:
    // Failures while a row is shown are reported through `ui`; the pictures go into list 1
    // of `thumbnails`, which is emptied when the window closes.
    ChoosePicWindow(QWidget *parent, Interaction &ui, ThumbnailCache &thumbnails, const std::string &wanted,
                    const std::vector<MapCandidate> &candidates);

    // The row of cmbMaps when the window closed (the last row is "NO_MAP").
    int ChosenMapIndex() const { return m_chosen; }

protected:
    void changeEvent(QEvent *event) override;
    void done(int result) override;

private:
    void cmbMaps_Click(int row);
    void chkThumbNail_Click(bool checked);

    Interaction &m_ui;
    ThumbnailCache &m_thumbnails;
    QComboBox *m_cmbMaps;
    QLabel *m_imgMapThumb;
    QCheckBox *m_chkThumbNail;
    QPlainTextEdit *m_txtMapInfo;
    QPushButton *m_cmdOK;
    std::vector<std::string> m_listedMaps; // one full path per row
    int m_chosen = 0;
};

// Shows the window modally and returns the chosen candidate's index, or -1 for "NO_MAP".
int ChoosePic(QWidget *parent, Interaction &ui, ThumbnailCache &thumbnails, const std::string &wanted,
              const std::vector<MapCandidate> &candidates);

} // namespace gelvane
