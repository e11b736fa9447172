// velmoor-layout FILE.ui HEADER.h: writes the header where it would be another.
#include <QFile>
#include <QFileInfo>
#include <cstdio>
#include <stdexcept>

#include "Header.h"

namespace {

void WriteIfOther(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  if (file.open(QIODevice::ReadOnly) && file.readAll() == bytes) return;
  file.close();
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush()) {
    throw std::runtime_error((path + QStringLiteral(": cannot be written")).toStdString());
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("usage: velmoor-layout FILE.ui HEADER.h\n", stderr);
    return 2;
  }
  try {
    const velmoor::layouts::Source source =
        velmoor::layouts::ReadSource(QFile::decodeName(argv[1]));
    WriteIfOther(QFile::decodeName(argv[2]), velmoor::layouts::HeaderOf(source));
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
