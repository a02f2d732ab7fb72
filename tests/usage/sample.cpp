#include "sample.h"

namespace usagetest {

Sample::Sample() {
  manual.summary = "moves boxes about";
  manual.exitStatus = {{"0", "moved"}, {"1", "dropped"}};
  manual.examples = {"mover box lift 7"};
  manual.hints = {"Mind your back."};
  manual.environment = {{"MOVER_HOME", "Where the mover lives."}};
  manual.files = {{"/etc/mover", "Its boxes."}};
  manual.seeAlso = {"box(5)", "crane(1)"};
  manual.words = {{"--speed", {"slow", "fast"}}};

  app.require_subcommand(1);
  app.add_option("--speed", text_, "How fast")->type_name("SPEED");
  app.add_option("--map", text_, "The way")->type_name("FILE");
  app.add_flag("-q,--quiet", flag_, "Say nothing");
  app.add_option("--secret", text_, "Not for everybody")->group("");

  CLI::App& box = *app.add_subcommand("box", "Boxes and what is in them");
  box.require_subcommand(1)->fallthrough();
  CLI::App& lift = *box.add_subcommand("lift", "Lift a box")->fallthrough();
  lift.add_option("ID", text_, "which box")->required()->type_name("");
  lift.add_option("--height", text_, "How high [1]")->type_name("M")->check(CLI::Range(1, 9));
  lift.footer("Example: mover box lift 7");
  CLI::App& pack = *box.add_subcommand("pack", "Fill a box with files")->fallthrough();
  pack.add_option("--to", text_, "The box")->required()->type_name("FILE");
  pack.add_option("things", texts_, "Files to put in")->required()->type_name("FILE");
  app.add_subcommand("rest", "Do nothing");
  app.add_subcommand("idle", "Not for everybody")->group("");
}

}  // namespace usagetest
