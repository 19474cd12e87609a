#include "gui/ImageSurface.h"

#include <QBuffer>
#include <QImageWriter>

#include <algorithm>
#include <cmath>

namespace kelvane {

namespace {

// Titles are measured many times over while they are fitted into cells. Text
// of Latin letters without combining marks looks the same unshaped, and
// measuring it so is several times faster. Everything else is shaped: Arabic
// letters join, marks sit on their letters and emoji sequences and flags
// become one picture, both when measured and when drawn.
bool NeedsShaping(const QString& text) {
    constexpr char16_t kFirstCombiningMark = 0x0300;
    return std::any_of(text.begin(), text.end(),
                       [](QChar unit) { return unit.unicode() >= kFirstCombiningMark; });
}

int ToPixel(double value) {
    return static_cast<int>(std::floor(value + 0.5));
}

// The pixels from one corner to the other, both included.
QRect PixelBox(double x1, double y1, double x2, double y2) {
    const int left = ToPixel(std::min(x1, x2));
    const int right = ToPixel(std::max(x1, x2));
    const int top = ToPixel(std::min(y1, y2));
    const int bottom = ToPixel(std::max(y1, y2));
    return QRect(QPoint(left, top), QPoint(right, bottom));
}

}  // namespace

ImageSurface::ImageSurface(const QColor& background, const QColor& windowText)
    : font_(QStringLiteral("Arial"), 9),
      background_(background),
      windowText_(windowText),
      textColour_(windowText) {}

ImageSurface::~ImageSurface() {
    EndPainting();
}

void ImageSurface::Resize(int width, int height, double ratio) {
    EndPainting();
    ratio_ = ratio > 0 ? ratio : 1.0;
    if (width <= 0 || height <= 0) {
        image_ = QImage();
        width_ = 0;
        height_ = 0;
    } else {
        width_ = width;
        height_ = height;
        image_ = QImage(static_cast<int>(std::ceil(width * ratio_)),
                        static_cast<int>(std::ceil(height * ratio_)), QImage::Format_RGB32);
        image_.setDevicePixelRatio(ratio_);
        image_.fill(background_);
    }
    unitImage_ = QImage();
    if (ratio_ != 1.0 && !image_.isNull()) {
        unitImage_ = QImage(width, height, QImage::Format_RGB32);
        unitImage_.fill(background_);
    }
    for (auto& metrics : metrics_) {
        metrics.reset();
    }
    for (auto& widths : widths_) {
        widths.clear();
    }
    currentX_ = 0;
    currentY_ = 0;
}

const QImage& ImageSurface::Image() const {
    EndPainting();
    return image_;
}

QPainter* ImageSurface::Painter() {
    if (image_.isNull()) {
        return nullptr;
    }
    if (!painter_) {
        painter_ = std::make_unique<QPainter>(&image_);
        painter_->setPen(textColour_);
        if (changed_) {
            changed_();
        }
    }
    return painter_.get();
}

QPainter* ImageSurface::UnitPainter() {
    if (unitImage_.isNull()) {
        return nullptr;
    }
    if (!unitPainter_) {
        unitPainter_ = std::make_unique<QPainter>(&unitImage_);
        unitPainter_->setPen(textColour_);
    }
    return unitPainter_.get();
}

void ImageSurface::EndPainting() const {
    painter_.reset();
    unitPainter_.reset();
}

void ImageSurface::Clear() {
    EndPainting();
    image_.fill(background_);
    if (!unitImage_.isNull()) {
        unitImage_.fill(background_);
    }
    currentX_ = 0;
    currentY_ = 0;
    if (changed_) {
        changed_();
    }
}

// Read from the picture at one pixel per unit, so that a scaled screen gives
// the same answers as an unscaled one.
qint32 ImageSurface::ColourAt(double x, double y) const {
    const QImage& picture = UnitPicture();
    const QPoint point(ToPixel(x), ToPixel(y));
    if (!picture.valid(point)) {
        return FromQColor(background_);
    }
    return FromQColor(QColor(picture.pixel(point)));
}

QFont ImageSurface::FontFor(const QString& text) const {
    QFont font = font_;
    if (!NeedsShaping(text)) {
        font.setStyleStrategy(QFont::PreferNoShaping);
    }
    return font;
}

const QFontMetricsF& ImageSurface::Metrics(const QString& text) const {
    std::optional<QFontMetricsF>& metrics = metrics_[NeedsShaping(text) ? 1 : 0];
    if (!metrics) {
        if (image_.isNull()) {
            metrics.emplace(FontFor(text));
        } else {
            metrics.emplace(FontFor(text), &image_);
        }
    }
    return *metrics;
}

double ImageSurface::TextWidth(const QString& text) const {
    constexpr qsizetype kRememberedWidths = 8192;
    QHash<QString, double>& widths = widths_[font_.bold() ? 1 : 0];
    const auto known = widths.constFind(text);
    if (known != widths.constEnd()) {
        return *known;
    }
    if (widths.size() >= kRememberedWidths) {
        widths.clear();
    }
    const double width = Metrics(text).horizontalAdvance(text);
    widths.insert(text, width);
    return width;
}

// Font engines overflow at giant sizes and answer with nonsense heights; the
// point size itself then gives the line height.
double ImageSurface::TextHeight(const QString&) const {
    const double height = Metrics(QString()).height();
    if (std::isfinite(height) && height > 0) {
        return height;
    }
    constexpr double kLineSpacing = 1.2;
    const double dpi = image_.isNull() ? 96.0 : image_.logicalDpiY();
    return font_.pointSizeF() * dpi / 72.0 * kLineSpacing;
}

// A picture of one line of text in the current font and colour on a clear
// background, with a margin left and right for letters that reach past their
// advance (italics, overhanging tails).
const QImage& ImageSurface::DrawnLine(const QString& text, int margin) {
    constexpr qsizetype kRememberedBytes = 32 * 1024 * 1024;
    const QString key = text + QChar(0) + QString::number(textColour_.rgb(), 16) +
                        (font_.bold() ? QLatin1Char('b') : QLatin1Char('r'));
    const auto known = lines_.constFind(key);
    if (known != lines_.constEnd()) {
        return *known;
    }
    if (lineBytes_ > kRememberedBytes) {
        lines_.clear();
        lineBytes_ = 0;
    }
    const QFontMetricsF& metrics = Metrics(text);
    QImage line(static_cast<int>(std::ceil(TextWidth(text))) + 2 * margin,
                static_cast<int>(std::ceil(metrics.height())), QImage::Format_ARGB32_Premultiplied);
    line.setDotsPerMeterX(image_.dotsPerMeterX());
    line.setDotsPerMeterY(image_.dotsPerMeterY());
    line.fill(Qt::transparent);
    QPainter painter(&line);
    painter.setFont(FontFor(text));
    painter.setPen(textColour_);
    painter.drawText(QPointF(margin, metrics.ascent()), text);
    painter.end();
    lineBytes_ += line.sizeInBytes();
    return *lines_.insert(key, line);
}

void ImageSurface::Print(const QString& text, LineEnd end) {
    if (!text.isEmpty()) {
        DrawOnEach([this, &text](QPainter& painter, bool unitPicture) {
            PrintOn(painter, text, unitPicture);
        });
    }
    if (end == LineEnd::NewLine) {
        currentX_ = 0;
        currentY_ += TextHeight(text);
    } else {
        currentX_ += TextWidth(text);
    }
}

// Lines larger than the whole picture are drawn straight onto it, clipped,
// rather than first into a picture of their own size. So are all lines on a
// scaled picture, where a copied line could land between device pixels.
void ImageSurface::PrintOn(QPainter& painter, const QString& text, bool unitPicture) {
    const QFontMetricsF& metrics = Metrics(text);
    const double height = metrics.height();
    if (!unitPicture || TextWidth(text) > width_ || height > height_) {
        // The whole line at once, so that it is shaped as it was measured.
        painter.setFont(FontFor(text));
        painter.drawText(QPointF(ToPixel(currentX_), ToPixel(currentY_) + metrics.ascent()), text);
        return;
    }
    const int margin = static_cast<int>(std::ceil(height / 4));
    painter.drawImage(QPoint(ToPixel(currentX_) - margin, ToPixel(currentY_)),
                      DrawnLine(text, margin));
}

void ImageSurface::DrawLine(double x1, double y1, double x2, double y2, qint32 colour) {
    const QPoint from(ToPixel(x1), ToPixel(y1));
    const QPoint to(ToPixel(x2), ToPixel(y2));
    DrawOnEach([this, &from, &to, colour](QPainter& painter, bool) {
        if (from.x() == to.x() || from.y() == to.y()) {
            painter.fillRect(QRect(from, to).normalized(), ToQColor(colour));
            return;
        }
        painter.setPen(ToQColor(colour));
        painter.drawLine(from, to);
        painter.setPen(textColour_);
    });
}

void ImageSurface::FillBox(double x1, double y1, double x2, double y2, qint32 colour) {
    const QRect box = PixelBox(x1, y1, x2, y2);
    DrawOnEach(
        [&box, colour](QPainter& painter, bool) { painter.fillRect(box, ToQColor(colour)); });
}

void ImageSurface::SetTextColour(qint32 colour) {
    textColour_ = ToQColor(colour);
    if (painter_) {
        painter_->setPen(textColour_);
    }
    if (unitPainter_) {
        unitPainter_->setPen(textColour_);
    }
}

qint32 ImageSurface::WindowTextColour() const {
    return FromQColor(windowText_);
}

void ImageSurface::FontChanged() {
    for (auto& metrics : metrics_) {
        metrics.reset();
    }
}

void ImageSurface::FaceChanged() {
    FontChanged();
    for (auto& widths : widths_) {
        widths.clear();
    }
    lines_.clear();
    lineBytes_ = 0;
}

// Setting the font it already has keeps what was measured and drawn in it.
void ImageSurface::SetFontName(const QString& name) {
    if (font_.family() != name) {
        font_.setFamily(name);
        FaceChanged();
    }
}

void ImageSurface::SetFontSize(double points) {
    if (points > 0 && font_.pointSizeF() != points) {
        font_.setPointSizeF(points);
        FaceChanged();
    }
}

void ImageSurface::SetFontBold(bool bold) {
    if (font_.bold() != bold) {
        font_.setBold(bold);
        FontChanged();
    }
}

void ImageSurface::SetFontItalic(bool italic) {
    if (font_.italic() != italic) {
        font_.setItalic(italic);
        FaceChanged();
    }
}

void ImageSurface::SetFontUnderline(bool underline) {
    if (font_.underline() != underline) {
        font_.setUnderline(underline);
        FaceChanged();
    }
}

void ImageSurface::DrawingDone() {
    if (finished_) {
        finished_();
    }
}

bool ImageSurface::EncodePicture(QByteArray& bitmap, QString& error) const {
    EndPainting();
    bitmap.clear();
    QBuffer buffer(&bitmap);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "BMP");
    if (!writer.write(UnitPicture())) {
        error = writer.errorString();
        bitmap.clear();
        return false;
    }
    return true;
}

}  // namespace kelvane
