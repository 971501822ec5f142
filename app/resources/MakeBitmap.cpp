#include <QImage>

// make-bitmap PICTURE BITMAP: writes a picture without transparency as a BMP file.
int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const QImage picture(QString::fromLocal8Bit(argv[1]));
  return picture.convertToFormat(QImage::Format_RGB888).save(QString::fromLocal8Bit(argv[2]), "BMP") ? 0 : 1;
}
