// The answer for a product, and the one that holds an invoice's file.
#include "tests/fuzz/export_pass.h"
#include "tests/fuzz/fuzz_input.h"
#include "tests/fuzz/sample_answers.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static ExportPass pass;
    ShopAnswers answers;
    answers.orders = sample_answers::order;
    answers.invoices = sample_answers::invoice;
    answers.product = inputOf(data, size);
    answers.file = answers.product;
    pass.run(answers);
    return 0;
}
