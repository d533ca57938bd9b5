#include "gui/maps/ChoosePicWindow.h"

#include "core/maps/Thumbnails.h"
#include "core/model/Numbers.h"
#include "core/platform/AsciiCase.h"
#include "core/platform/Failure.h"
#include "core/platform/Paths.h"
#include "gui/ThumbnailImage.h"
#include "gui/WidgetText.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTime>
#include <QEvent>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace gelvane {
namespace {

constexpr int kChoiceList = 1; // the thumbnail list of the choice window and the open dialog

QPixmap FixedPicture(std::string_view key) {
    return QPixmap::fromImage(ThumbnailToImage(FixedThumbnail(key)));
}

} // namespace

ChoosePicWindow::ChoosePicWindow(QWidget *parent, Interaction &ui, ThumbnailCache &thumbnails,
                                 const std::string &wanted, const std::vector<MapCandidate> &candidates)
    : QDialog(parent), m_ui(ui), m_thumbnails(thumbnails) {
    setObjectName("frmChoosePic");
    setWindowTitle("Choose the right map file");
    setModal(true);

    auto *lblChoosePic = new QLabel("More than one file matched the search. Choose a file from the combo-box.", this);
    lblChoosePic->setObjectName("lblChoosePic");
    lblChoosePic->setWordWrap(true);
    m_cmbMaps = new QComboBox(this);
    m_cmbMaps->setObjectName("cmbMaps");
    m_imgMapThumb = new QLabel(this);
    m_imgMapThumb->setObjectName("imgMapThumb");
    m_imgMapThumb->setFixedSize(kThumbPixels, kThumbPixels);
    m_imgMapThumb->setAlignment(Qt::AlignCenter);
    m_chkThumbNail = new QCheckBox(this);
    m_chkThumbNail->setObjectName("chkThumbNail");
    m_chkThumbNail->setChecked(true);
    auto *lblToggleThumbNail = new QLabel("Show Thumbnail", this);
    lblToggleThumbNail->setObjectName("lblToggleThumbNail");
    lblToggleThumbNail->setBuddy(m_chkThumbNail);
    m_txtMapInfo = new QPlainTextEdit(this);
    m_txtMapInfo->setObjectName("txtMapInfo");
    m_txtMapInfo->setReadOnly(true);
    m_cmdOK = new QPushButton("OK", this);
    m_cmdOK->setObjectName("cmdOK");
    m_cmdOK->setDefault(true);

    auto *toggle = new QHBoxLayout;
    toggle->addWidget(m_chkThumbNail);
    toggle->addWidget(lblToggleThumbNail);
    toggle->addStretch();
    auto *left = new QVBoxLayout;
    left->addWidget(m_imgMapThumb);
    left->addLayout(toggle);
    auto *right = new QVBoxLayout;
    right->addWidget(m_cmbMaps);
    right->addWidget(m_txtMapInfo);
    right->addWidget(m_cmdOK, 0, Qt::AlignRight);
    auto *body = new QHBoxLayout;
    body->addLayout(left);
    body->addLayout(right, 1);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(lblChoosePic);
    layout->addLayout(body);

    const std::string name = wanted;
    for (size_t i = 0; i < candidates.size(); ++i) {
        m_cmbMaps->addItem(Latin1(name + " " + std::to_string(i + 1)));
        m_listedMaps.push_back(candidates[i].Path);
    }
    m_cmbMaps->addItem("NO_MAP");
    m_listedMaps.push_back("NO_MAP\\" + name);

    connect(m_cmbMaps, &QComboBox::currentIndexChanged, this, &ChoosePicWindow::cmbMaps_Click);
    connect(m_chkThumbNail, &QCheckBox::toggled, this, &ChoosePicWindow::chkThumbNail_Click);
    connect(m_cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    cmbMaps_Click(0);
}

void ChoosePicWindow::changeEvent(QEvent *event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        m_chkThumbNail->setChecked(true);
}

void ChoosePicWindow::done(int result) {
    m_chosen = m_cmbMaps->currentIndex();
    m_thumbnails.Clear(kChoiceList);
    QDialog::done(result);
}

void ChoosePicWindow::cmbMaps_Click(int row) {
    if (row < 0 || static_cast<size_t>(row) >= m_listedMaps.size())
        return;
    int line = 1;
    try {
        const std::string &path = m_listedMaps[static_cast<size_t>(row)];
        const bool showThumb = m_chkThumbNail->isChecked();
        if (showThumb)
            m_imgMapThumb->setPixmap(FixedPicture("Loading"));
        m_cmdOK->setEnabled(false);
        QApplication::processEvents();
        line = 2;
        bool shown = false;
        if (showThumb) {
            // Two rows may name one file: a picture already in the list is shown as well.
            if (m_thumbnails.LoadThumbNail(path, kChoiceList) || m_thumbnails.Contains(path, kChoiceList)) {
                m_imgMapThumb->setPixmap(CachedThumbnailPixmap(m_thumbnails, LCase(path), kChoiceList));
                shown = true;
            } else {
                m_imgMapThumb->setPixmap(FixedPicture("NA"));
            }
        }
        line = 3;
        const auto real = ResolvePath(path);
        std::string info = "File Path: " + std::string(FolderPart(real.value_or(path)));
        if (shown && real) {
            const QFileInfo file(QString::fromLocal8Bit(real->c_str()));
            QDateTime created = file.birthTime();
            if (!created.isValid())
                created = file.lastModified();
            std::string dimensions = m_thumbnails.DimensionsOf(path);
            if (dimensions.empty())
                dimensions = "N/A";
            info += "\r\nDimensions: " + dimensions + " pixels";
            info += "\r\nSize: " + NumberText(RoundPlaces(static_cast<double>(file.size()) / 1000000.0, 2)) + " MB";
            info += "\r\nCreated: " + QLocale().toString(created, QLocale::ShortFormat).toStdString();
        }
        m_txtMapInfo->setPlainText(Latin1(info));
        line = 4;
        m_cmdOK->setEnabled(true);
    } catch (const Failure &failure) {
        m_ui.MessageBox("Error in the cmbMaps sub\r\n" + failure.Description + ", error number " +
                            std::to_string(failure.Number) + "\r\nCode line number " + std::to_string(line),
                        kProgramTitle, MsgIcon::Exclamation);
        m_cmdOK->setEnabled(true);
    }
}

void ChoosePicWindow::chkThumbNail_Click(bool checked) {
    m_imgMapThumb->setEnabled(checked);
    if (!checked) {
        m_imgMapThumb->clear();
        return;
    }
    cmbMaps_Click(m_cmbMaps->currentIndex());
}

int ChoosePic(QWidget *parent, Interaction &ui, ThumbnailCache &thumbnails, const std::string &wanted,
              const std::vector<MapCandidate> &candidates) {
    ChoosePicWindow window(parent, ui, thumbnails, wanted, candidates);
    window.exec();
    const int row = window.ChosenMapIndex();
    return row >= 0 && static_cast<size_t>(row) < candidates.size() ? row : -1;
}

} // namespace gelvane
