// Renders an SVG picture into a square PNG of a given size. The build makes
// the desktop icon's fixed sizes from the scalable icon with it:
//
//     varnock-svg2png IN.svg SIZE OUT.png

#include <QImage>
#include <QPainter>
#include <QString>
#include <QSvgRenderer>

#include <iostream>
#include <string>

int main(int argc, char **argv) {
    if (argc != 4) {
        std::cerr << "usage: varnock-svg2png IN.svg SIZE OUT.png\n";
        return 2;
    }
    int size = 0;
    try {
        size = std::stoi(argv[2]);
    } catch (const std::exception &) {
    }
    if (size < 1 || size > 4096) {
        std::cerr << "varnock-svg2png: bad size \"" << argv[2] << "\"\n";
        return 2;
    }

    QSvgRenderer svg(QString::fromLocal8Bit(argv[1]));
    if (!svg.isValid()) {
        std::cerr << "varnock-svg2png: cannot read " << argv[1] << "\n";
        return 1;
    }

    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    svg.render(&painter);
    painter.end();

    if (!image.convertToFormat(QImage::Format_ARGB32)
             .save(QString::fromLocal8Bit(argv[3]), "PNG")) {
        std::cerr << "varnock-svg2png: cannot write " << argv[3] << "\n";
        return 1;
    }
    return 0;
}
