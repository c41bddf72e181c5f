// Row identifiers from text. The input is the text.
//
// Properties: numbers are read or a documented code raised; what was read is written as the text that was
// read; each number alone is the one of the whole.

#include "dvtypes/erowid.h"
#include "dvtypes/nerowid.h"
#include "fuzz_input.h"
#include "raise.h"

using namespace dv::fuzz;
using dv::test::raise_of;

namespace {

constexpr int _codes[] = {0, -5080, -5081, -5082, -5084};

template <typename Text>
Text text_of_(std::string_view input) {
    Text text;
    std::memset(&text, 'A', sizeof text);
    std::memcpy(&text, input.data(), std::min(input.size(), sizeof text));
    return text;
}

// A record of its own block, so that nothing is read beside it.
template <typename Text>
const Text *on_heap_(const Text &text, std::vector<char> &block) {
    block.assign(text.text, text.text + sizeof text);
    return reinterpret_cast<const Text *>(block.data());
}

void erowid_(std::string_view input) {
    const auto text = text_of_<erowid_t>(input);
    std::vector<char> block;
    const erowid_t *const erowid = on_heap_(text, block);
    rowid_t rowid{};
    const int code = raise_of([&] { erowid_get_rowid(erowid, &rowid); });
    require_one_of(_codes, "a code of rowids", code);

    rowid_t parts{};
    const int part_codes[] = {raise_of([&] { erowid_get_sgmt(erowid, &parts.sgmt); }),
                              raise_of([&] { erowid_get_file(erowid, &parts.file); }),
                              raise_of([&] { erowid_get_block(erowid, &parts.block); }),
                              raise_of([&] { erowid_get_row(erowid, &parts.row); })};
    const bool all_are_read = std::count(std::begin(part_codes), std::end(part_codes), 0) == 4;
    require(all_are_read == (code == 0), "the whole as its parts", code);
    if (code != 0) return;
    require(parts.sgmt == rowid.sgmt && parts.file == rowid.file && parts.block == rowid.block &&
                parts.row == rowid.row,
            "the same numbers", rowid.row);
    erowid_t again;
    erowid_new(&again, rowid.sgmt, rowid.file, rowid.block, rowid.row);
    require(std::memcmp(&again, &text, sizeof text) == 0, "the same text", rowid.row);
}

void nerowid_(std::string_view input) {
    const auto text = text_of_<nerowid_t>(input);
    std::vector<char> block;
    nrowid_t rowid = 0;
    const int code = raise_of([&] { nerowid_get_rowid(on_heap_(text, block), &rowid); });
    require(code == 0 || (code == -5080 && rowid == 0), "a code of row numbers", code);
    if (code != 0) return;
    nerowid_t again;
    nerowid_new(&again, rowid);
    require(std::memcmp(&again, &text, sizeof text) == 0, "the same text", static_cast<long long>(rowid));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    erowid_(text);
    nerowid_(text);
    return 0;
}
