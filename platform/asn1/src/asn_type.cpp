#include "orma/asn1/asn_type.h"

#include "orma/asn1/asn_list_base.h"

AsnType::~AsnType() = default;

AsnListBase::~AsnListBase() = default;
