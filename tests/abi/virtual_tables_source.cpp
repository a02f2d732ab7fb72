// What the compiler dumps the virtual tables of.
#include "corbaemfinterface.h"
#include "emfalmrecords.h"
#include "emfresrecords.h"
#include "emftoporecords.h"
#include "faultmessages.h"
#include "orma/access/prdu_res_info_convert.h"
#include "orma/bundle/log_proxy.h"
#include "orma/bundle/service_interface.h"
#include "ormaemfsvc.h"
#include "submapbufmgr.h"

// Templates are dumped once something asks for their objects.
template <typename... T>
constexpr std::size_t sizes = (sizeof(T) + ...);
static_assert(
    sizes<ASNUCList, AsnAlmKeyStrc, AsnAlmKeyList, AsnoFMSDateTimeStrc, AsnResDNList, AsnRelation,
          AsnDistinguishedResourceSeqOf, AsnDistinguishedResource, AsnOtherToSvrQryAlmEventReqSeqOf,
          AsnAlmQryExtendConditionSeqOf, AsnAlmQryExtendCondition, AsnLstAlmQryExtendCondition,
          ASNULList, AsnAddiInfo, AsnOtherToSvrQryAlmEventReqSeqOf1, AsnOtherToSvrQryAlmEventReq,
          AsnSvrToOtherQryRespResultStrcSeqOf, AsnSvrToOtherQryRespResultStrc,
          AsnSvrToOtherQryRespResultList, AsnSvrToOtherQryResp> > 0);
