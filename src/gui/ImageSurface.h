#pragma once

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QHash>
#include <QImage>
#include <QPainter>

#include <array>
#include <functional>
#include <memory>
#include <optional>

#include "gui/DrawingSurface.h"
#include "gui/QtColours.h"

namespace kelvane {

// A DrawingSurface over a QImage that keeps its picture between repaints. One
// unit is one logical pixel; the picture has `ratio` device pixels per unit,
// so that scaled screens show it sharp. At a ratio other than 1 everything is
// also drawn on a picture of one pixel per unit, exactly as an unscaled
// screen's, which colours are read from and which is saved. A surface of no
// size draws nothing and measures text as usual.
class ImageSurface final : public DrawingSurface {
  public:
    ImageSurface(const QColor& background, const QColor& windowText);
    ~ImageSurface() override;
    ImageSurface(const ImageSurface&) = delete;
    ImageSurface& operator=(const ImageSurface&) = delete;

    // A new blank picture of the given size in units, at `ratio` device
    // pixels per unit.
    void Resize(int width, int height, double ratio = 1.0);
    double PixelRatio() const { return ratio_; }
    // The picture as the last drawing left it, with its device pixel ratio.
    const QImage& Image() const;
    // Called when the picture starts to change, so a window can schedule a repaint.
    void OnChanged(std::function<void()> changed) { changed_ = std::move(changed); }
    // Called when a whole drawing is done.
    void OnFinished(std::function<void()> finished) { finished_ = std::move(finished); }

    void Clear() override;
    qint32 ColourAt(double x, double y) const override;
    double ScaleWidth() const override { return width_; }
    double ScaleHeight() const override { return height_; }
    double TextWidth(const QString& text) const override;
    double TextHeight(const QString& text) const override;
    double CurrentX() const override { return currentX_; }
    double CurrentY() const override { return currentY_; }
    void SetCurrentX(double x) override { currentX_ = x; }
    void SetCurrentY(double y) override { currentY_ = y; }
    void Print(const QString& text, LineEnd end) override;
    void DrawLine(double x1, double y1, double x2, double y2, qint32 colour) override;
    void FillBox(double x1, double y1, double x2, double y2, qint32 colour) override;
    void SetTextColour(qint32 colour) override;
    qint32 WindowTextColour() const override;
    QString FontName() const override { return font_.family(); }
    double FontSize() const override { return font_.pointSizeF(); }
    void SetFontName(const QString& name) override;
    void SetFontSize(double points) override;
    void SetFontBold(bool bold) override;
    void SetFontItalic(bool italic) override;
    void SetFontUnderline(bool underline) override;
    void DrawingDone() override;
    bool EncodePicture(QByteArray& bitmap, QString& error) const override;

  private:
    QPainter* Painter();
    QPainter* UnitPainter();
    // The picture at one pixel per unit: the unit picture, or at ratio 1 the picture itself.
    const QImage& UnitPicture() const { return unitImage_.isNull() ? image_ : unitImage_; }
    // Runs `draw` on each picture, telling it whether that one has a pixel per unit.
    template <typename Draw>
    void DrawOnEach(Draw draw) {
        if (QPainter* painter = Painter()) {
            draw(*painter, ratio_ == 1.0);
        }
        if (QPainter* unitPainter = UnitPainter()) {
            draw(*unitPainter, true);
        }
    }
    void PrintOn(QPainter& painter, const QString& text, bool unitPicture);
    void EndPainting() const;
    // After a change of weight only, or of anything that changes text widths.
    void FontChanged();
    void FaceChanged();
    const QImage& DrawnLine(const QString& text, int margin);
    // The font a text is measured and drawn in: the surface's font, without
    // shaping for text that needs none.
    QFont FontFor(const QString& text) const;
    const QFontMetricsF& Metrics(const QString& text) const;

    QImage image_;
    int width_ = 0;
    int height_ = 0;
    double ratio_ = 1.0;
    mutable std::unique_ptr<QPainter> painter_;
    QImage unitImage_;
    mutable std::unique_ptr<QPainter> unitPainter_;
    QFont font_;
    // Metrics of the font without and with shaping.
    mutable std::array<std::optional<QFontMetricsF>, 2> metrics_;
    // Widths already measured in the current font, plain and bold: redraws
    // measure the same title starts again and again.
    mutable std::array<QHash<QString, double>, 2> widths_;
    // Texts already drawn, by text, colour and weight: copying a drawn line is
    // several times faster than drawing its letters again.
    QHash<QString, QImage> lines_;
    qsizetype lineBytes_ = 0;
    QColor background_;
    QColor windowText_;
    QColor textColour_;
    double currentX_ = 0;
    double currentY_ = 0;
    std::function<void()> changed_;
    std::function<void()> finished_;
};

}  // namespace kelvane
