#include "maps/ChoosePicWindow.h"

#include "model/Failure.h"
#include "model/Numbers.h"
#include "model/Text.h"
#include "platform/Paths.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTime>
#include <QEvent>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QImageReader>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace gelvane {
namespace {

constexpr int kThumbSize = 160;

QString Latin1(const std::string &text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

// A square image with a word on it, for "Loading" and "NA".
QPixmap WordPicture(const QString &word) {
    QPixmap picture(kThumbSize, kThumbSize);
    picture.fill(Qt::black);
    QPainter painter(&picture);
    painter.setPen(Qt::white);
    painter.drawText(picture.rect(), Qt::AlignCenter, word);
    return picture;
}

} // namespace

ChoosePicWindow::ChoosePicWindow(QWidget *parent, const std::string &wanted,
                                 const std::vector<MapCandidate> &candidates)
    : QDialog(parent) {
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
    m_imgMapThumb->setFixedSize(kThumbSize, kThumbSize);
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
    m_thumbs.clear();
    QDialog::done(result);
}

const QPixmap *ChoosePicWindow::LoadThumbNail(const std::string &path, QSize *pictureSize) {
    const std::string key = LCase(path);
    if (auto it = m_thumbs.find(key); it != m_thumbs.end()) {
        *pictureSize = it->second.Size;
        return &it->second.Picture;
    }
    const auto real = ResolvePath(path);
    if (!real)
        return nullptr;
    QImageReader reader(QString::fromLocal8Bit(real->c_str()));
    const QImage image = reader.read();
    if (image.isNull())
        return nullptr;
    // Centred on black with its aspect kept.
    QPixmap picture(kThumbSize, kThumbSize);
    picture.fill(Qt::black);
    QPainter painter(&picture);
    const QImage scaled = image.scaled(kThumbSize, kThumbSize, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    painter.drawImage((kThumbSize - scaled.width()) / 2, (kThumbSize - scaled.height()) / 2, scaled);
    painter.end();
    Thumb &thumb = m_thumbs[key];
    thumb.Picture = picture;
    thumb.Size = image.size();
    *pictureSize = thumb.Size;
    return &thumb.Picture;
}

void ChoosePicWindow::cmbMaps_Click(int row) {
    if (row < 0 || static_cast<size_t>(row) >= m_listedMaps.size())
        return;
    int line = 1;
    try {
        const std::string &path = m_listedMaps[static_cast<size_t>(row)];
        const bool showThumb = m_chkThumbNail->isChecked();
        if (showThumb)
            m_imgMapThumb->setPixmap(WordPicture("Loading"));
        m_cmdOK->setEnabled(false);
        QApplication::processEvents();
        line = 2;
        const QPixmap *picture = nullptr;
        QSize size;
        if (showThumb) {
            picture = LoadThumbNail(path, &size);
            m_imgMapThumb->setPixmap(picture ? *picture : WordPicture("NA"));
        }
        line = 3;
        const auto real = ResolvePath(path);
        std::string info = "File Path: " + std::string(FolderPart(real.value_or(path)));
        if (picture && real) {
            const QFileInfo file(QString::fromLocal8Bit(real->c_str()));
            QDateTime created = file.birthTime();
            if (!created.isValid())
                created = file.lastModified();
            info +=
                "\r\nDimensions: " + std::to_string(size.width()) + " X " + std::to_string(size.height()) + " pixels";
            info += "\r\nSize: " + NumberText(RoundPlaces(static_cast<double>(file.size()) / 1000000.0, 2)) + " MB";
            info += "\r\nCreated: " + QLocale().toString(created, QLocale::ShortFormat).toStdString();
        }
        m_txtMapInfo->setPlainText(Latin1(info));
        line = 4;
        m_cmdOK->setEnabled(true);
    } catch (const Failure &failure) {
        QMessageBox::warning(this, "Gelvane",
                             Latin1("Error in the cmbMaps sub\r\n" + failure.Description + ", error number " +
                                    std::to_string(failure.Number) + "\r\nCode line number " + std::to_string(line)));
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

int ChoosePic(QWidget *parent, const std::string &wanted, const std::vector<MapCandidate> &candidates) {
    ChoosePicWindow window(parent, wanted, candidates);
    window.exec();
    const int row = window.ChosenMapIndex();
    return row >= 0 && static_cast<size_t>(row) < candidates.size() ? row : -1;
}

} // namespace gelvane
