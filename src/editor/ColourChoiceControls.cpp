#include "editor/ColourChoiceControls.h"

#include <QGridLayout>
#include <QHBoxLayout>

#include "calfile/Conversions.h"
#include "gui/NamedWidgets.h"
#include "gui/QtColours.h"
#include "store/CalenderMOD.h"
#include "store/Module1.h"

namespace kelvane {

qint16 ColourChannelValue(const QString& text) {
    const double value = RoundHalfEven(Val(text));
    return value >= -255 && value <= 255 ? static_cast<qint16>(value) : 0;
}

ColourChoiceControls::ColourChoiceControls(QWidget* page, ColourDialogs& dialogs)
    : QObject(page),
      Columns(new QWidget(page)),
      lblSample(NamedWidget<QLabel>(page, "lblSample", QStringLiteral("Sample"))),
      cmdFontCol(NamedButton(Columns, "cmdFontCol", QStringLiteral("Font Colour"))),
      cmdBackCol(NamedButton(Columns, "cmdBackCol", QStringLiteral("Back Colour"))),
      chkFCValid(NamedWidget<QCheckBox>(Columns, "chkFCValid", QStringLiteral("Enabled"))),
      chkBCValid(NamedWidget<QCheckBox>(Columns, "chkBCValid", QStringLiteral("Enabled"))),
      chkFCAbsolute(NamedWidget<QCheckBox>(Columns, "chkFCAbsolute", QStringLiteral("Absoloute"))),
      chkBCAbsolute(NamedWidget<QCheckBox>(Columns, "chkBCAbsolute", QStringLiteral("Absoloute"))),
      txtFCred(NamedWidget<QLineEdit>(Columns, "txtFCred")),
      txtFCgreen(NamedWidget<QLineEdit>(Columns, "txtFCgreen")),
      txtFCBlue(NamedWidget<QLineEdit>(Columns, "txtFCBlue")),
      txtBCRed(NamedWidget<QLineEdit>(Columns, "txtBCRed")),
      txtBCGreen(NamedWidget<QLineEdit>(Columns, "txtBCGreen")),
      txtBCblue(NamedWidget<QLineEdit>(Columns, "txtBCblue")),
      page_(page),
      dialogs_(dialogs),
      font_(&unattached_[0]),
      back_(&unattached_[1]) {
    lblSample->setAlignment(Qt::AlignCenter);
    lblSample->setAutoFillBackground(true);
    lblSample->setFrameShape(QFrame::Panel);
    lblSample->setFrameShadow(QFrame::Sunken);
    BuildColumns();
    NameBoxes();
    Connect();
}

// Font colour on the left, back colour on the right, each over its three boxes.
void ColourChoiceControls::BuildColumns() {
    auto* row = new QHBoxLayout(Columns);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(18);
    const auto addColumn = [row](QPushButton* button, QCheckBox* valid, QCheckBox* absolute,
                                 std::initializer_list<QLineEdit*> boxes) {
        auto* grid = new QGridLayout;
        grid->addWidget(button, 0, 0, 1, 3);
        grid->addWidget(valid, 1, 0, 1, 3);
        grid->addWidget(absolute, 2, 0, 1, 3);
        int column = 0;
        for (QLineEdit* box : boxes) {
            box->setAlignment(Qt::AlignRight);
            // Room for "-255" and no more.
            box->setMaximumWidth(box->fontMetrics().horizontalAdvance(QStringLiteral("-2550")) +
                                 12);
            grid->addWidget(box, 3, column++);
        }
        row->addLayout(grid);
    };
    addColumn(cmdFontCol, chkFCValid, chkFCAbsolute, {txtFCred, txtFCgreen, txtFCBlue});
    addColumn(cmdBackCol, chkBCValid, chkBCAbsolute, {txtBCRed, txtBCGreen, txtBCblue});
}

// The boxes have no label of their own and both columns' check boxes read the
// same: only their place says which colour they belong to, and a screen reader
// cannot see that.
void ColourChoiceControls::NameBoxes() {
    chkFCValid->setAccessibleName(QStringLiteral("Font colour enabled"));
    chkFCAbsolute->setAccessibleName(QStringLiteral("Font colour absolute"));
    chkBCValid->setAccessibleName(QStringLiteral("Back colour enabled"));
    chkBCAbsolute->setAccessibleName(QStringLiteral("Back colour absolute"));
    txtFCred->setAccessibleName(QStringLiteral("Font colour red"));
    txtFCgreen->setAccessibleName(QStringLiteral("Font colour green"));
    txtFCBlue->setAccessibleName(QStringLiteral("Font colour blue"));
    txtBCRed->setAccessibleName(QStringLiteral("Back colour red"));
    txtBCGreen->setAccessibleName(QStringLiteral("Back colour green"));
    txtBCblue->setAccessibleName(QStringLiteral("Back colour blue"));
}

QList<QWidget*> ColourChoiceControls::TabOrder() const {
    return {cmdFontCol, chkFCValid, chkFCAbsolute, txtFCred, txtFCgreen, txtFCBlue,
            cmdBackCol, chkBCValid, chkBCAbsolute, txtBCRed, txtBCGreen, txtBCblue};
}

void ColourChoiceControls::Connect() {
    const auto onEdit = [this](QLineEdit* box, void (ColourChoiceControls::*handler)()) {
        connect(box, &QLineEdit::textEdited, this, [this, handler] { (this->*handler)(); });
    };
    onEdit(txtFCred, &ColourChoiceControls::txtFCred_KeyUp);
    onEdit(txtFCgreen, &ColourChoiceControls::txtFCgreen_KeyUp);
    onEdit(txtFCBlue, &ColourChoiceControls::txtFCBlue_KeyUp);
    onEdit(txtBCRed, &ColourChoiceControls::txtBCRed_KeyUp);
    onEdit(txtBCGreen, &ColourChoiceControls::txtBCGreen_KeyUp);
    onEdit(txtBCblue, &ColourChoiceControls::txtBCblue_KeyUp);
    connect(chkFCValid, &QCheckBox::clicked, this, [this] { chkFCValid_Click(); });
    connect(chkBCValid, &QCheckBox::clicked, this, [this] { chkBCValid_Click(); });
    connect(chkFCAbsolute, &QCheckBox::clicked, this, [this] { chkFCAbsolute_Click(); });
    connect(chkBCAbsolute, &QCheckBox::clicked, this, [this] { chkBCAbsolute_Click(); });
    connect(cmdFontCol, &QPushButton::clicked, this, [this] { cmdFontCol_Click(); });
    connect(cmdBackCol, &QPushButton::clicked, this, [this] { cmdBackCol_Click(); });
}

void ColourChoiceControls::Attach(ColourChoice& font, ColourChoice& back) {
    font_ = &font;
    back_ = &back;
    ShowValues();
    RedrawSample();
}

void ColourChoiceControls::ShowValues() {
    chkBCValid->setChecked(back_->Enabled);
    chkFCValid->setChecked(font_->Enabled);
    chkBCAbsolute->setChecked(back_->Absolute);
    chkFCAbsolute->setChecked(font_->Absolute);
    txtFCred->setText(QString::number(font_->Red));
    txtFCgreen->setText(QString::number(font_->Green));
    txtFCBlue->setText(QString::number(font_->Blue));
    txtBCRed->setText(QString::number(back_->Red));
    txtBCGreen->setText(QString::number(back_->Green));
    txtBCblue->setText(QString::number(back_->Blue));
}

void ColourChoiceControls::Box_KeyUp(const QLineEdit* box, qint16& component) {
    component = ColourChannelValue(box->text());
    RedrawSample();
}

void ColourChoiceControls::CheckBox_Click(const QCheckBox* box, bool& flag) {
    flag = box->checkState() != Qt::Unchecked;
    RedrawSample();
}

void ColourChoiceControls::ColourButton_Click(ColourChoice& choice, QLineEdit* red,
                                              QLineEdit* green, QLineEdit* blue) {
    if (const std::optional<qint32> chosen = dialogs_.Show(LastColour)) {
        LastColour = *chosen;
    }
    SplitColour(LastColour, choice.Red, choice.Green, choice.Blue);
    red->setText(QString::number(choice.Red));
    green->setText(QString::number(choice.Green));
    blue->setText(QString::number(choice.Blue));
    RedrawSample();
}

// The back colour is worked out on the dialog's own background, the font
// colour on the system's text colour.
void ColourChoiceControls::RedrawSample() {
    const QPalette& own = page_->window()->palette();
    const ColourValue base = FromQColor(own.color(QPalette::Window));
    const ColourValue text = FromQColor(own.color(QPalette::WindowText));
    QPalette sample = lblSample->palette();
    sample.setColor(QPalette::Window, ToQColor(ResolveColour(base, *back_)));
    sample.setColor(QPalette::WindowText, ToQColor(ResolveColour(text, *font_)));
    lblSample->setPalette(sample);
}

}  // namespace kelvane
