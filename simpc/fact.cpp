#include "simpc/fact.h"

AnyFact::AnyFact(FactTable *table, KeyRow row, const char *event)
    : row_(std::move(row)), event_(QString::fromUtf8(event)), place_(table->all_.size())
{
    row_.changes = !event_.isEmpty();
    table->all_.push_back(this);
}
