#pragma once

#include "platform/pages/PagePainter.h"

#include <QWidget>

namespace velmora::print {

// What a sample shows: one label and value line as reports draw it.
struct Sample {
    QString caption;
    QString value;
    qint16 leaderStyle = 0;
    qint16 style = 0;
    friend bool operator==(const Sample&, const Sample&) = default;
};

// The sample as a page, drawn by the very code that draws reports.
pages::Document SampleDocument(const Sample& sample);
// Draws a sample's page into a rectangle of the painter's device at that resolution.
void DrawSample(QPainter& painter, const QRect& rect, const pages::Document& document, int dotsPerInch);

// A piece of paper with a sample on it.
class SampleView : public QWidget {
    Q_OBJECT

public:
    explicit SampleView(const Sample& sample, QWidget* parent = nullptr);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const pages::Document document_;
};

} // namespace velmora::print
