// The whole platform as the plug-in sees it, scripted and recorded; one a process.
//
//   TEST_F(PlatformTest, …) {
//     platform().rest.devices({json(R"({"nativeId":"NE=2"})")});
//     …
//     EXPECT_THAT(platform().log.texts(), ElementsAre(…));
//   }
//
// Thread-safety: thread-safe recording; scripts belong to the test's thread.
#pragma once

#include "alarm_rest_double.h"
#include "bundle_double.h"
#include "channel_double.h"
#include "cursor_double.h"
#include "database_double.h"
#include "journal.h"
#include "log_double.h"
#include "resource_rest_double.h"
#include "rest_double.h"
#include "southbound_double.h"
#include "text_double.h"
#include "trace_double.h"

namespace emf::doubles {

struct Platform {
  Journal journal;  // of everything below
  TraceDouble trace;
  LogDouble log;
  BundleDouble bundles;
  ProxyDouble proxies;
  ConfigDouble config;
  TextDouble text;
  RestDouble rest;
  AlarmRestDouble alarms;
  ResourceRestDouble resources;
  DatabaseDouble database;
  CursorDouble cursors;
  SouthboundDouble southbound;
  ChannelDouble channel;

  // Back to the state at start: nothing recorded, nothing scripted, the log service present.
  void reset();
};

Platform& platform();

}  // namespace emf::doubles
