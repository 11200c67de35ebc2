// A page of orders: what is in them becomes the columns and rows of the export.
#include "tests/fuzz/export_pass.h"
#include "tests/fuzz/fuzz_input.h"
#include "tests/fuzz/sample_answers.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static ExportPass pass;
    ShopAnswers answers;
    answers.orders = inputOf(data, size);
    answers.refunds = sample_answers::refund;
    pass.run(answers);
    return 0;
}
