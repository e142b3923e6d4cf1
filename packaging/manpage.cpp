// Writes varnock-chart's manual page: the prose a person wrote, with the
// options written in from the command's own table, so the page names every
// option as --help does and no other.
//   varnock-chart-man PAGE.in PAGE
// The line `.\" OPTIONS` of PAGE.in gives way to a section for each part of
// --help, each option under .TP with its help.

#include "cli/options.h"

#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>

using namespace varnock::cli;

namespace {

// Text as groff reads it: backslashes and minus signs escaped, a line that
// starts with a control character made plain, and what lies beyond ASCII
// by its code point, so the page needs no input encoding.
std::string Roff(const std::string &text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        if ((c == '.' || c == '\'') && (i == 0 || text[i - 1] == '\n'))
            out += "\\&";
        if (c == '\\' || c == '-') {
            out += c == '\\' ? "\\e" : "\\-";
        } else if (c >= 0xC0) {
            const int more = c >= 0xF0 ? 3 : c >= 0xE0 ? 2 : 1;
            unsigned code = c & (0x3Fu >> more);
            for (int k = 0; k < more && i + 1 < text.size(); ++k)
                code = code << 6 | (static_cast<unsigned char>(text[++i]) & 0x3Fu);
            char escaped[16];
            std::snprintf(escaped, sizeof escaped, "\\[u%04X]", code);
            out += escaped;
        } else {
            out += static_cast<char>(c);
        }
    }
    return out;
}

std::string OptionSections() {
    std::string out;
    for (int s = 0; s <= static_cast<int>(Section::Other); ++s) {
        const auto section = static_cast<Section>(s);
        // Piece by piece: GCC 12 warns of an overlapping copy otherwise.
        out.append(".SH ").append(SectionHeading(section, true)).append("\n");
        for (const OptionSpec &entry : OptionTable()) {
            if (entry.section != section)
                continue;
            out += ".TP\n";
            if (!entry.shortName.empty())
                out.append("\\fB").append(Roff(std::string(entry.shortName))).append("\\fR, ");
            out.append("\\fB").append(Roff(std::string(entry.name))).append("\\fR");
            if (!entry.valueName.empty())
                out.append(" \\fI").append(Roff(std::string(entry.valueName))).append("\\fR");
            // A word broken over two lines of --help is one word here.
            std::string help = OptionHelp(entry, 0);
            for (auto at = help.find("-\n"); at != std::string::npos; at = help.find("-\n", at))
                help.erase(at + 1, 1);
            out.append("\n").append(Roff(help)).append("\n");
        }
    }
    return out;
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 3) {
        std::cerr << "usage: varnock-chart-man PAGE.in PAGE\n";
        return 2;
    }
    std::ifstream in(argv[1]);
    std::stringstream page;
    page << in.rdbuf();
    std::string text = page.str();
    const std::string marker = ".\\\" OPTIONS\n";
    const auto at = text.find(marker);
    if (!in || at == std::string::npos) {
        std::cerr << "varnock-chart-man: no line .\\\" OPTIONS in " << argv[1] << "\n";
        return 1;
    }
    text.replace(at, marker.size(), OptionSections());
    std::ofstream out(argv[2], std::ios::binary);
    out << text;
    return out.flush() ? 0 : 1;
}
