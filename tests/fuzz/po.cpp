#include "Exchanged.h"

void fuzz(const Input &input)
{
    exchanges(ExchangeFormat::Po, input);
}
