#include "alarm_frame.h"

#include "faultmessages.h"

namespace {

void fillItem(AsnSvrToOtherQryRespResultStrc& item, int number) {
  item.ulSerialNo = 1000000 + number;
  item.ulDevSerialNo = 2000 + number;
  item.ulNodeType = 131077;
  item.ulDevID = 2 + number % 5000;
  item.ucDevType = 5;
  item.ulFaultID = 1001 + number % 20;
  item.ucSeverity = 1 + number % 4;
  item.ucFunctionType = 3;
  item.ucEventType = 1;
  item.strName.ReSet("LOSS_OF_SIGNAL");
  item.ulReasonID = 2;
  item.strReason.ReSet("The fibre is broken");
  item.strRepair.ReSet("Check the fibre");
  item.strMeaning.ReSet("No optical power");
  item.ucFaultFlag.make() = 1;
  item.faultTime->sYear = 2026;
  item.faultTime->cMonth = 11;
  item.faultTime->cDay = 21;
  item.faultTime->cHour = number % 24;
  item.faultTime->cMinute = number % 60;
  item.faultTime->cSecond = 7;
  item.neZone = 60;
  item.strLocation.ReSet("rack 4, shelf 2");
  item.strFdn.make().ReSet(("NE=" + std::to_string(2 + number % 5000) + ",FR=1,S=3,PP=7").c_str());
  item.strPara.ReSet("port=7");
  item.strDetail.ReSet("");
}

}  // namespace

std::string alarmFrame(int items, int number, int total) {
  AsnSvrToOtherQryResp reply;
  reply.ulFrameTotal = total;
  reply.ulFrameNo = number;
  for (int i = 0; i < items; ++i) fillItem(reply.lstItem.add(), i);
  AsnBuf buffer;
  reply.BEnc(buffer, NIClass_EncodingFormat_BER);
  return std::string(reinterpret_cast<const char*>(buffer.data()), buffer.size());
}
