#include "emftoporecords.h"

Device::Device() : id(0), mainType(0), subType(0) {}

Device::~Device() = default;

Node::Node()
    : deviceId(0),
      procId(0),
      fixedCode(0),
      zeroCode(0),
      spareCode(0),
      nodeKind(0),
      posX(0),
      posY(0),
      topoId(0) {}

Node::~Node() = default;

SubMap::SubMap()
    : spareNumber(0),
      mapType(0),
      zeroField1(0),
      topoClassId(0),
      spareField(0),
      zeroField2(0),
      procId(0),
      posX(0),
      posY(0) {}

SubMap::~SubMap() = default;

PhysicalLink::PhysicalLink()
    : linkAttribute(0),
      linkStatus(0),
      srcZero(0),
      srcPortType(0),
      srcPortStatus(0),
      dstZero(0),
      dstPortType(0),
      dstPortStatus(0),
      spareInt(0) {}

PhysicalLink::~PhysicalLink() = default;

DispLink::DispLink() : number1(0), number2(0), number3(0) {}

DispLink::~DispLink() = default;

UpdateDevice::UpdateDevice() : id(0) {}

UpdateDevice::~UpdateDevice() = default;

SimNode::SimNode() = default;

SimNode::~SimNode() = default;
