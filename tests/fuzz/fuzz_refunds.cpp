// The refunds of an order, repaired until they add up to what was paid back.
#include "tests/fuzz/export_pass.h"
#include "tests/fuzz/fuzz_input.h"
#include "tests/fuzz/sample_answers.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static ExportPass pass;
    ShopAnswers answers;
    answers.orders = sample_answers::order;
    answers.refunds = inputOf(data, size);
    pass.run(answers);
    return 0;
}
