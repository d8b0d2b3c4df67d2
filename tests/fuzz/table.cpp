#include "Exchanged.h"

void fuzz(const Input &input)
{
    exchanges(ExchangeFormat::Csv, input);
    exchanges(ExchangeFormat::Tsv, input);
}
