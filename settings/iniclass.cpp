#include "settings/iniclass.h"

#include "platform/msgbox.h"
#include "platform/textstream.h"

#include <utility>

namespace varnock {

namespace {
const std::string CR = "\r";
} // namespace

iniClass::iniClass(std::optional<FolderItem> file) : iniFileName(std::move(file)) {}

Int iniClass::GetPreference(const std::string &section, const std::string &key,
                            std::string &value) {
    // `value` may be the caller's section or key variable; keep our own copies
    // before it is overwritten.
    const std::string sectionName = section;
    const std::string keyName = key;
    try {
        if (!iniFileName || !iniFileName->Exists()) {
            value = "";
            return 0;
        }
        // Released when it goes out of scope; nothing else is done with it.
        const auto input = TextInputStream::Open(iniFileName);
        if (!input) {
            value = "";
            return 0;
        }
        std::string text = input->ReadAll();

        // The header only counts with its line end right behind it.
        Int found = InStr(text, "[" + sectionName + "]" + CR);
        if (found == 0) {
            value = "";
            return 0;
        }
        // Drop everything up to and including the header's "[".
        text = Right(text, Len(text) - found);

        // From here to the end of the file, not just this section.
        found = InStr(text, keyName + "=");
        if (found == 0) {
            value = "";
            return 0;
        }
        // Now starting at the second character of the matched key.
        text = Right(text, Len(text) - found);

        // With no CR left the count is negative and the line is empty.
        const std::string line = Left(text, InStr(text, CR) - 1);
        value = Right(line, Len(line) - InStr(line, "="));
        return Len(value);
    } catch (...) {
        value = "";
        MsgBox("Error reading preference: " + sectionName + " - " + keyName);
        return 0;
    }
}

void iniClass::SetPreference(const std::string &section, const std::string &key,
                             const std::string &value) {
    try {
        if (!iniFileName || !iniFileName->Exists()) {
            // A nil file raises here and ends in the writing message.
            const auto output = TextOutputStream::Create(iniFileName);
            if (!output)
                return;
            output->Write("[" + section + "]" + CR + key + "=" + value + CR);
            output->Close();
            return;
        }

        std::string text;
        {
            const auto input = TextInputStream::Open(iniFileName);
            if (!input)
                return;
            text = input->ReadAll();
            input->Close();
        }

        // From here the old content lives only in `text`.
        const auto output = iniFileName->CreateTextFile();
        if (!output) {
            MsgBox("Error creating preference stream: " + section + " - " + key + " - " + value);
            return;
        }

        const std::string header = "[" + section + "]";
        Int found = InStr(text, header);
        if (found == 0) {
            // A new section goes to the end of the file.
            output->Write(text + header + CR + key + "=" + value + CR);
            output->Close();
            return;
        }

        // HEAD: everything in front of the section, then its header line.
        std::string head = Left(text, found - 1);
        text = Right(text, Len(text) - found + 1);
        head += Left(text, InStr(text, CR));
        // The body: lose the "[" and then all up to and including the first CR.
        // Without a CR only the "[" goes.
        text = Right(text, Len(text) - 1);
        text = Right(text, Len(text) - InStr(text, CR));

        // TAIL: from the next header on. Without one the section runs to the
        // end of the file.
        std::string tail;
        found = InStr(text, CR + "[");
        if (found != 0) {
            tail = Right(text, Len(text) - found);
            text = Left(text, found);
        }

        found = InStr(text, key + "=");
        std::string rewritten;
        if (found != 0) {
            // Keep the line as it is up to and including its first "=", then
            // swap what follows, up to the line end, for the new value.
            head += Left(text, found);
            text = Right(text, Len(text) - found);
            head += Left(text, InStr(text, "="));
            text = Right(text, Len(text) - InStr(text, CR));
            rewritten = head + value + CR + text + tail;
        } else {
            // A new key goes to the end of its section.
            rewritten = head + text + key + "=" + value + CR + tail;
        }
        output->Write(rewritten);
        output->Close();
    } catch (...) {
        MsgBox("Error writing Preference: " + section + " - " + key + " - " + value);
    }
}

} // namespace varnock
