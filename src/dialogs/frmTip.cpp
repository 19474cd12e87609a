#include "dialogs/frmTip.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "calfile/Conversions.h"
#include "dialogs/TipTexts.h"
#include "gui/NamedWidgets.h"
#include "gui/ProgramIcon.h"

namespace kelvane {

frmTip::frmTip(RandomSource& random, QWidget* parent)
    : QDialog(parent),
      Picture1(NamedWidget<QFrame>(this, "Picture1")),
      Label1(NamedWidget<QLabel>(Picture1, "Label1", QStringLiteral("Did you know..."))),
      lblTipText(NamedWidget<QLabel>(Picture1, "lblTipText")),
      cmdNextTip(NamedButton(this, "cmdNextTip", QStringLiteral("&Next Tip"))),
      cmdOK(NamedButton(this, "cmdOK", QStringLiteral("OK"))),
      random_(random) {
    setObjectName(QStringLiteral("frmTip"));
    setWindowTitle(QStringLiteral("Tips..."));
    setModal(true);
    BuildControls();
    connect(cmdNextTip, &QPushButton::clicked, this, [this] { cmdNextTip_Click(); });
    connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
    Form_Load();
}

void frmTip::BuildControls() {
    Picture1->setFrameShape(QFrame::StyledPanel);
    Picture1->setAutoFillBackground(true);
    Picture1->setBackgroundRole(QPalette::Base);
    QFont heading = Label1->font();
    heading.setBold(true);
    heading.setPointSizeF(heading.pointSizeF() * 1.3);
    Label1->setFont(heading);
    lblTipText->setWordWrap(true);
    lblTipText->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    lblTipText->setTextInteractionFlags(Qt::TextSelectableByMouse);
    lblTipText->setMinimumSize(360, 96);
    auto* picture = new QLabel(Picture1);
    picture->setPixmap(ProgramPicture(48, devicePixelRatioF()));
    picture->setAccessibleName(QStringLiteral("Kelvane picture"));
    picture->setAlignment(Qt::AlignTop);
    auto* texts = new QVBoxLayout;
    texts->addWidget(Label1);
    texts->addWidget(lblTipText, 1);
    auto* frame = new QHBoxLayout(Picture1);
    frame->addWidget(picture);
    frame->addLayout(texts, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdNextTip);
    buttons->addWidget(cmdOK);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Picture1, 1);
    layout->addLayout(buttons);
    SetTabOrder({cmdNextTip, cmdOK});
}

void frmTip::Form_Load() {
    for (int tip = 1; tip <= 9; ++tip) {
        TipShown[static_cast<std::size_t>(tip)] = false;
    }
    TipsShownCount = 0;
    TipCount = TipTextCount;
    ShowNextTip();
}

// When the round is complete every tip may come again, the one just shown too.
void frmTip::ShowNextTip() {
    const int tip = DrawUnshownTip();
    TipShown[static_cast<std::size_t>(tip)] = true;
    ++TipsShownCount;
    if (TipsShownCount >= TipCount) {
        for (int other = 1; other <= TipCount; ++other) {
            TipShown[static_cast<std::size_t>(other)] = false;
        }
        TipsShownCount = 0;
    }
    shownTip_ = tip;
    lblTipText->setText(Trim(TipText(tip)));
}

// Draws until a tip of this round comes up. A source that keeps giving shown
// tips is not waited on forever: the first tip not yet shown is taken then.
int frmTip::DrawUnshownTip() {
    constexpr int kMostDraws = 10000;
    for (int draw = 0; draw < kMostDraws; ++draw) {
        const int tip = static_cast<int>(random_.Next() * TipCount) + 1;
        if (tip >= 1 && tip <= TipCount && !TipShown[static_cast<std::size_t>(tip)]) {
            return tip;
        }
    }
    for (int tip = 1; tip <= TipCount; ++tip) {
        if (!TipShown[static_cast<std::size_t>(tip)]) {
            return tip;
        }
    }
    return 1;
}

}  // namespace kelvane
