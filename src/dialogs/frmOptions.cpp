#include "dialogs/frmOptions.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "editor/ColourChoiceControls.h"
#include "gui/NamedWidgets.h"
#include "gui/Twips.h"

namespace kelvane {

namespace {

constexpr double kPreviewWidthTwips = 4800;
constexpr double kPreviewHeightTwips = 3600;

}  // namespace

frmOptions::frmOptions(Store& store, Calender& calender1, QWidget* parent)
    : QDialog(parent),
      calender2View(NamedWidget<SurfaceWidget>(this, "calender2")),
      picOptions(NamedWidget<QFrame>(this, "picOptions")),
      lblFontName(NamedWidget<QLabel>(picOptions, "lblFontName", QStringLiteral("Font Name"))),
      cmbFontName(NamedWidget<QComboBox>(picOptions, "cmbFontName")),
      lblFontSize(NamedWidget<QLabel>(picOptions, "lblFontSize", QStringLiteral("Font Size"))),
      txtFontSize(NamedWidget<QLineEdit>(picOptions, "txtFontSize")),
      lstColourList(NamedWidget<QListWidget>(picOptions, "lstColourList")),
      cmdColour(NamedButton(picOptions, "cmdColour", QStringLiteral("Colour"))),
      txtRed(NamedWidget<QLineEdit>(picOptions, "txtRed")),
      txtGreen(NamedWidget<QLineEdit>(picOptions, "txtGreen")),
      txtBlue(NamedWidget<QLineEdit>(picOptions, "txtBlue")),
      chkAbsolute(NamedWidget<QCheckBox>(picOptions, "chkAbsolute", QStringLiteral("Absolute"))),
      chkEnabled(NamedWidget<QCheckBox>(picOptions, "chkEnabled", QStringLiteral("Enabled"))),
      cmdOK(NamedButton(this, "cmdOK", QStringLiteral("OK"))),
      cmdCancel(NamedButton(this, "cmdCancel", QStringLiteral("Cancel"))),
      store_(store),
      calender1_(calender1),
      calender2_(
          std::make_unique<Calender>(store.module1, store.calender, calender2View->Surface())) {
    setObjectName(QStringLiteral("frmOptions"));
    setWindowTitle(QStringLiteral("Options"));
    setModal(true);
    calender2View->SetEvents(calender2_.get());
    BuildControls();
    SetUpKeyboard();
    Form_Load();
    Connect();
}

frmOptions::~frmOptions() {
    calender2View->SetEvents(nullptr);
}

// The font and the colour list in a frame on the left, the preview on the
// right, OK and Cancel under both.
void frmOptions::BuildControls() {
    cmbFontName->setEditable(true);
    cmbFontName->setInsertPolicy(QComboBox::NoInsert);
    picOptions->setFrameShape(QFrame::StyledPanel);
    const int boxWidth = txtRed->fontMetrics().horizontalAdvance(QStringLiteral("-2550")) + 12;
    for (QLineEdit* box : {txtRed, txtGreen, txtBlue, txtFontSize}) {
        box->setMaximumWidth(boxWidth);
        box->setAlignment(Qt::AlignRight);
    }
    auto* channels = new QHBoxLayout;
    channels->addWidget(txtRed);
    channels->addWidget(txtGreen);
    channels->addWidget(txtBlue);
    channels->addStretch();
    auto* frame = new QGridLayout(picOptions);
    frame->addWidget(lblFontName, 0, 0);
    frame->addWidget(lblFontSize, 0, 1);
    frame->addWidget(cmbFontName, 1, 0);
    frame->addWidget(txtFontSize, 1, 1);
    frame->addWidget(lstColourList, 2, 0, 1, 2);
    frame->addWidget(cmdColour, 3, 0, 1, 2);
    frame->addLayout(channels, 4, 0, 1, 2);
    frame->addWidget(chkAbsolute, 5, 0, 1, 2);
    frame->addWidget(chkEnabled, 6, 0, 1, 2);

    const double dpi = DotsPerInch(this);
    calender2View->setMinimumSize(TwipsToPixels(kPreviewWidthTwips, dpi),
                                  TwipsToPixels(kPreviewHeightTwips, dpi));
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    auto* layout = new QGridLayout(this);
    layout->addWidget(picOptions, 0, 0);
    layout->addWidget(calender2View, 0, 1);
    layout->addLayout(buttons, 1, 0, 1, 2);
    layout->setColumnStretch(1, 1);
}

// Tab reads the frame on the left top to bottom, then OK and Cancel; the
// preview only shows. The colour list and boxes have no labels on screen.
void frmOptions::SetUpKeyboard() {
    lblFontName->setBuddy(cmbFontName);
    lblFontSize->setBuddy(txtFontSize);
    lstColourList->setAccessibleName(QStringLiteral("Colour list"));
    txtRed->setAccessibleName(QStringLiteral("Red"));
    txtGreen->setAccessibleName(QStringLiteral("Green"));
    txtBlue->setAccessibleName(QStringLiteral("Blue"));
    calender2View->setAccessibleName(QStringLiteral("Preview"));
    SetTabOrder({cmbFontName, txtFontSize, lstColourList, cmdColour, txtRed, txtGreen, txtBlue,
                 chkAbsolute, chkEnabled, cmdOK, cmdCancel});
}

void frmOptions::Connect() {
    connect(lstColourList, &QListWidget::currentRowChanged, this,
            [this] { lstColourList_Click(); });
    connect(lstColourList, &QListWidget::itemClicked, this, [this] { lstColourList_Click(); });
    connect(txtRed, &QLineEdit::textEdited, this, [this] { txtRed_KeyUp(); });
    connect(txtGreen, &QLineEdit::textEdited, this, [this] { txtGreen_KeyUp(); });
    connect(txtBlue, &QLineEdit::textEdited, this, [this] { txtBlue_KeyUp(); });
    connect(chkAbsolute, &QCheckBox::clicked, this, [this] { chkAbsolute_Click(); });
    connect(chkEnabled, &QCheckBox::clicked, this, [this] { chkEnabled_Click(); });
    connect(cmdColour, &QPushButton::clicked, this, [this] { cmdColour_Click(); });
    connect(cmbFontName, &QComboBox::editTextChanged, this, [this] { cmbFontName_Change(); });
    connect(cmbFontName, &QComboBox::activated, this, [this] { cmbFontName_Change(); });
    connect(txtFontSize, &QLineEdit::textChanged, this, [this] { txtFontSize_Change(); });
    connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
    connect(cmdCancel, &QPushButton::clicked, this, [this] { cmdCancel_Click(); });
}

void frmOptions::Form_Load() {
    Loaded = false;
    CurrentItem = 0;
    calender2_->SetCalenderOn(false);
    ListColours();
    QString name;
    qint16 size = 0;
    calender1_.GetFont(name, size);
    // The fonts go in first: a list that gets its first name shows it.
    cmbFontName->clear();
    cmbFontName->addItems(store_.module1.Services().Fonts.Families());
    cmbFontName->setCurrentIndex(cmbFontName->findText(name));
    cmbFontName->setEditText(name);
    txtFontSize->setText(QString::number(size));
    calender2_->SetFont(name, size);
    Loaded = true;
}

// One line per named slot, "0:Back Colour" and on; the first slot without a
// name, or with a name that fills all 20 characters, ends the list.
void frmOptions::ListColours() {
    ColourListTable& colours = store_.calender.ColourList;
    lstColourList->clear();
    for (std::size_t slot = 0; slot < colours.size(); ++slot) {
        const QString name = colours[slot].Name.Trimmed();
        colours[slot].Name = name;
        if (name.isEmpty() || name.size() == ColourNameLength) {
            break;
        }
        lstColourList->addItem(Trim(QString::number(slot) + QLatin1Char(':') + name));
    }
    SavedColours = colours;
}

void frmOptions::lstColourList_Click() {
    const int row = lstColourList->currentRow();
    if (row < 0) {
        return;
    }
    CurrentItem = static_cast<qint16>(row);
    ShowColourItem();
}

void frmOptions::ShowColourItem() {
    const ColourListItem& item = Item();
    cmdColour->setText(item.Name.Trimmed());
    txtRed->setText(QString::number(item.Red));
    txtGreen->setText(QString::number(item.Green));
    txtBlue->setText(QString::number(item.Blue));
    chkAbsolute->setChecked(item.Absolute);
    chkEnabled->setChecked(item.Enabled);
}

void frmOptions::Channel_KeyUp(const QLineEdit* box, qint16 ColourListItem::*channel) {
    Item().*channel = ColourChannelValue(box->text());
    RedrawPreview();
}

void frmOptions::Flag_Click(const QCheckBox* box, bool ColourListItem::*flag) {
    Item().*flag = box->isChecked();
    RedrawPreview();
}

void frmOptions::RedrawPreview() {
    if (Loaded) {
        calender2_->Display();
    }
}

// The colour picked becomes the slot's three channels; its flags stay, so on
// a slot that is not absolute the colour acts as an offset.
void frmOptions::cmdColour_Click() {
    ColourListItem& item = Item();
    const std::optional<qint32> chosen =
        store_.module1.Services().ColourDialog.Show(MakeColour(item.Red, item.Green, item.Blue));
    if (!chosen) {
        return;
    }
    SplitColour(*chosen, item.Red, item.Green, item.Blue);
    txtRed->setText(QString::number(item.Red));
    txtGreen->setText(QString::number(item.Green));
    txtBlue->setText(QString::number(item.Blue));
    calender2_->Display();
}

// Sizes outside 5..24 become 10, in the box too.
void frmOptions::ApplyFont() {
    const QString name = cmbFontName->currentText();
    double size = RoundHalfEven(Val(txtFontSize->text()));
    if (!(size >= SmallestFontSize && size < TooLargeFontSize)) {
        size = FallbackFontSize;
        txtFontSize->setText(QString::number(FallbackFontSize));
    }
    calender2_->SetFont(name, static_cast<qint16>(size));
    calender2_->Display();
}

// Sizes outside 5..24 wait for OK or a new font name.
void frmOptions::txtFontSize_Change() {
    const double size = RoundHalfEven(Val(txtFontSize->text()));
    if (Loaded && size >= SmallestFontSize && size < TooLargeFontSize) {
        ApplyFont();
    }
}

void frmOptions::cmdOK_Click() {
    QString name;
    qint16 size = 0;
    calender2_->GetFont(name, size);
    calender1_.SetFont(name, size);
    accept();
}

void frmOptions::cmdCancel_Click() {
    reject();
}

// Cancel and Escape put the colour list back as it was at open.
void frmOptions::reject() {
    if (!closingByFrame_) {
        store_.calender.ColourList = SavedColours;
    }
    QDialog::reject();
}

// The window frame's close box ends the dialog keeping the colours as edited.
void frmOptions::closeEvent(QCloseEvent* event) {
    closingByFrame_ = true;
    QDialog::closeEvent(event);
    closingByFrame_ = false;
}

}  // namespace kelvane
