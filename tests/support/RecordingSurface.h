#pragma once

#include <QString>

#include <vector>

#include "gui/DrawingSurface.h"

namespace kelvane::testing {

// A surface with simple, exact measures that remembers what was drawn on it:
// every character is 10 units wide and every line 20 units high.
class RecordingSurface final : public DrawingSurface {
  public:
    static constexpr double CharacterWidth = 10;
    static constexpr double LineHeight = 20;
    static constexpr qint32 Background = 0x808080;
    static constexpr qint32 WindowText = 0x000000;

    struct Printed {
        QString text;
        double x = 0;
        double y = 0;
        qint32 colour = 0;
        bool bold = false;
    };
    struct Box {
        double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
        qint32 colour = 0;
    };

    RecordingSurface(double width, double height) : width_(width), height_(height) {}

    // What the last redraw drew; cleared by Clear.
    std::vector<Printed> prints;
    std::vector<Box> boxes;
    int clears = 0;

    // The non-empty texts printed with their top left inside a box, in order.
    std::vector<QString> TextsWithin(double left, double top, double right, double bottom) const {
        std::vector<QString> texts;
        for (const Printed& printed : prints) {
            if (!printed.text.isEmpty() && printed.x >= left && printed.x < right &&
                printed.y >= top && printed.y < bottom) {
                texts.push_back(printed.text);
            }
        }
        return texts;
    }

    void Clear() override {
        prints.clear();
        boxes.clear();
        ++clears;
        x_ = y_ = 0;
    }
    qint32 ColourAt(double, double) const override { return Background; }
    double ScaleWidth() const override { return width_; }
    double ScaleHeight() const override { return height_; }
    double TextWidth(const QString& text) const override {
        return CharacterWidth * static_cast<double>(text.size());
    }
    double TextHeight(const QString&) const override { return LineHeight; }
    double CurrentX() const override { return x_; }
    double CurrentY() const override { return y_; }
    void SetCurrentX(double x) override { x_ = x; }
    void SetCurrentY(double y) override { y_ = y; }
    void Print(const QString& text, LineEnd end) override {
        prints.push_back({text, x_, y_, textColour_, bold_});
        if (end == LineEnd::NewLine) {
            x_ = 0;
            y_ += LineHeight;
        } else {
            x_ += TextWidth(text);
        }
    }
    void DrawLine(double, double, double, double, qint32) override {}
    void FillBox(double x1, double y1, double x2, double y2, qint32 colour) override {
        boxes.push_back({x1, y1, x2, y2, colour});
    }
    void SetTextColour(qint32 colour) override { textColour_ = colour; }
    qint32 WindowTextColour() const override { return WindowText; }
    QString FontName() const override { return fontName_; }
    double FontSize() const override { return fontSize_; }
    void SetFontName(const QString& name) override { fontName_ = name; }
    void SetFontSize(double points) override { fontSize_ = points; }
    void SetFontBold(bool bold) override { bold_ = bold; }
    void SetFontItalic(bool italic) override { italic_ = italic; }
    void SetFontUnderline(bool underline) override { underline_ = underline; }
    bool EncodePicture(QByteArray&, QString& error) const override {
        error = QStringLiteral("nothing to save");
        return false;
    }

    bool Bold() const { return bold_; }
    bool Italic() const { return italic_; }
    bool Underline() const { return underline_; }

  private:
    double width_;
    double height_;
    double x_ = 0;
    double y_ = 0;
    qint32 textColour_ = WindowText;
    QString fontName_ = QStringLiteral("Arial");
    double fontSize_ = 9;
    bool bold_ = false;
    bool italic_ = false;
    bool underline_ = false;
};

}  // namespace kelvane::testing
