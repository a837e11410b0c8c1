#pragma once

#include <QString>

// The grammar of configuration documents as RelaxNG schemas, for editors and validators.
namespace zoHPCSchema
{
// In the compact syntax (.rnc) and in the XML syntax (.rng): the same schema.
QString compact();
QString xml();
} // namespace zoHPCSchema
