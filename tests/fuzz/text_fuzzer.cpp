#include "base/text.h"
#include "tests/fuzz/fuzz.h"

namespace bridge {

void fuzz(std::string_view input) {
    const auto repaired = repairUTF8(input);
    must(isUTF8(repaired));
    must((repaired == input) == isUTF8(input));

    const auto trimmed = trim(input);
    must(trimmed.data() >= input.data() && trimmed.data() + trimmed.size() <= input.data() + input.size());
    must(trim(trimmed) == trimmed);

    const auto folded = fold(input);
    must(isUTF8(folded));
    must(fold(folded) == folded);
    must(fold(repaired) == folded);
    must(isUTF8(lowercase(input)) && isUTF8(uppercase(input)));

    const auto count = graphemeCount(input);
    must(count <= input.size() && (count == 0) == input.empty());
    must(graphemeCount(repaired) == count);

    must(sortKey(repaired) == sortKey(input));
}

} // namespace bridge
