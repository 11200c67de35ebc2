// Tax rates of a shop, read for an order whose lines name them.
#include "tests/fuzz/export_pass.h"
#include "tests/fuzz/fuzz_input.h"
#include "tests/fuzz/sample_answers.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static ExportPass pass;
    ShopAnswers answers;
    answers.orders = sample_answers::order;
    answers.taxes = inputOf(data, size);
    pass.run(answers);
    return 0;
}
