#include "app/LicenceNotices.h"

#include <array>

namespace velmoor {
namespace {

struct Notice {
  const char* library;
  const char* use;
  const char* licence;
  const char* words;
};

constexpr std::array kNotices{
    Notice{"Qt 6 (Core, Gui, Widgets, Print Support, Serial Port)",
           "Windows, drawing, printing, USB adapters",
           "GNU Lesser General Public License, version 3",
           "Copyright The Qt Company Ltd. and other contributors.\r"
           "Qt is used as shared libraries, as they are delivered with the system. They can be "
           "replaced by changed ones of the same interface; Velmoor then runs on those. The "
           "licence's text lies in /usr/share/common-licenses/LGPL-3 and that of the General "
           "Public License, on which it builds, in /usr/share/common-licenses/GPL-3."},
    Notice{"SQLCipher", "Encryption of projects and catalogue", "BSD, three clauses",
           "Copyright 2008-2024, Zetetic LLC\rAll rights reserved.\r\r"
           "Redistribution and use in source and binary forms, with or without modification, are "
           "permitted provided that the following conditions are met:\r"
           "  * Redistributions of source code must retain the above copyright notice, this list "
           "of conditions and the following disclaimer.\r"
           "  * Redistributions in binary form must reproduce the above copyright notice, this "
           "list of conditions and the following disclaimer in the documentation and/or other "
           "materials provided with the distribution.\r"
           "  * Neither the name of the ZETETIC LLC nor the names of its contributors may be used "
           "to endorse or promote products derived from this software without specific prior "
           "written permission.\r\r"
           "THIS SOFTWARE IS PROVIDED BY ZETETIC LLC ''AS IS'' AND ANY EXPRESS OR IMPLIED "
           "WARRANTIES, INCLUDING, BUT NOT LIMITED TO, THE IMPLIED WARRANTIES OF MERCHANTABILITY "
           "AND FITNESS FOR A PARTICULAR PURPOSE ARE DISCLAIMED. IN NO EVENT SHALL ZETETIC LLC BE "
           "LIABLE FOR ANY DIRECT, INDIRECT, INCIDENTAL, SPECIAL, EXEMPLARY, OR CONSEQUENTIAL "
           "DAMAGES (INCLUDING, BUT NOT LIMITED TO, PROCUREMENT OF SUBSTITUTE GOODS OR SERVICES; "
           "LOSS OF USE, DATA, OR PROFITS; OR BUSINESS INTERRUPTION) HOWEVER CAUSED AND ON ANY "
           "THEORY OF LIABILITY, WHETHER IN CONTRACT, STRICT LIABILITY, OR TORT (INCLUDING "
           "NEGLIGENCE OR OTHERWISE) ARISING IN ANY WAY OUT OF THE USE OF THIS SOFTWARE, EVEN IF "
           "ADVISED OF THE POSSIBILITY OF SUCH DAMAGE."},
    Notice{"SQLite", "The database engine within SQLCipher", "Public domain",
           "The authors of SQLite have dedicated its code to the public domain."},
    Notice{"OpenSSL 3", "The ciphers that SQLCipher uses", "Apache License, version 2.0",
           "Copyright 1995-2020, The OpenSSL Project Authors.\r"
           "Used as a shared library, unchanged. The licence's text lies in "
           "/usr/share/common-licenses/Apache-2.0."},
    Notice{"spdlog and {fmt}", "The log", "MIT",
           "Copyright 2014-2016 Gabi Melman and spdlog contributors.\r"
           "Copyright 2012-2020 Victor Zverovich and {fmt} contributors.\r"
           "Permission is granted, free of charge, to use, copy, modify, merge, publish, "
           "distribute, sublicense and sell copies. The texts lie in /usr/share/doc, in the files "
           "\"copyright\" of the packages libspdlog and libfmt."},
    Notice{
        "CLI11", "Command lines", "BSD, three clauses",
        "Copyright 2017-2024 University of Cincinnati, developed by Henry Schreiner under NSF "
        "AWARD 1414736.\r"
        "Built into the programs. Its conditions and its disclaimer are those of SQLCipher above, "
        "with these holders' names; their own words lie in the file \"copyright\" of this "
        "program's package."},
    Notice{
        "toml++ and nlohmann-json", "Projects as text, results as JSON", "MIT",
        "Copyright 2020-2024 Mark Gillard; 2013-2023 Niels Lohmann; of parts 2008-2010 Bjoern "
        "Hoehrmann, 2009 Florian Loitsch.\r"
        "Built into the programs. "
        "Permission is hereby granted, free of charge, to any person obtaining a copy of this "
        "software and associated documentation files (the \"Software\"), to deal in the Software "
        "without restriction, including without limitation the rights to use, copy, modify, "
        "merge, publish, distribute, sublicense, and/or sell copies of the Software, and to "
        "permit persons to whom the Software is furnished to do so, subject to the following "
        "conditions:\r"
        "The above copyright notice and this permission notice shall be included in all copies "
        "or substantial portions of the Software.\r"
        "THE SOFTWARE IS PROVIDED \"AS IS\", WITHOUT WARRANTY OF ANY KIND, EXPRESS OR IMPLIED, "
        "INCLUDING BUT NOT LIMITED TO THE WARRANTIES OF MERCHANTABILITY, FITNESS FOR A "
        "PARTICULAR PURPOSE AND NONINFRINGEMENT. IN NO EVENT SHALL THE AUTHORS OR COPYRIGHT "
        "HOLDERS BE LIABLE FOR ANY CLAIM, DAMAGES OR OTHER LIABILITY, WHETHER IN AN ACTION OF "
        "CONTRACT, TORT OR OTHERWISE, ARISING FROM, OUT OF OR IN CONNECTION WITH THE SOFTWARE OR "
        "THE USE OR OTHER DEALINGS IN THE SOFTWARE."},
    Notice{"GNU C++ library and compiler library", "The language's own library",
           "GNU General Public License, version 3, with the GCC Runtime Library Exception",
           "Copyright Free Software Foundation, Inc.\r"
           "The exception permits programs of any licence to be built on these libraries."},
    Notice{"GNU C library", "The system's interface",
           "GNU Lesser General Public License, version 2.1 or later",
           "Copyright Free Software Foundation, Inc. and others.\r"
           "Used as a shared library. The licence's text lies in "
           "/usr/share/common-licenses/LGPL-2.1."},
};

}  // namespace

std::string LicenceNotices() {
  std::string text =
      "Velmoor is free software under the Apache License, version 2.0, which lies in "
      "/usr/share/common-licenses/Apache-2.0. It stands on these libraries. SQLCipher, with SQLite "
      "in it, CLI11, toml++ and nlohmann-json are built into the programs; the others are used as "
      "the system "
      "delivers "
      "them. What they stand on in turn is told in "
      "/usr/share/doc, in the file \"copyright\" of each package.";
  for (const Notice& notice : kNotices) {
    text += std::string("\r\r") + notice.library + "\r" + notice.use +
            "\rLicence: " + notice.licence + "\r" + notice.words;
  }
  return text;
}

}  // namespace velmoor
