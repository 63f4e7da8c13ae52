// What bash offers for the word that is being typed.
//
// Linux only: the shell is bash
#include <cstdlib>

#include "tool/tool_run.h"

namespace zortunedex::kit::tool {

namespace {

/// The words offered for the last one of a line, with blanks between them.
std::string Offered(const std::string& line) {
  const TempDir directory;
  directory.Write("script", "source <('" ZORTUNEDEX_TOOL "' completion bash)\nCOMP_WORDS=(" + line +
                                ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_tunedex\n"
                                "echo \"${COMPREPLY[*]}\"\n");
  const std::string command =
      "bash '" + directory.File("script") + "' > '" + directory.File("out") + "' 2>&1";
  EXPECT_EQ(0, std::system(command.c_str()));
  std::string out = directory.Read("out");
  if (!out.empty()) out.pop_back();
  return out;
}

TEST(Completion, OffersCommands) {
  EXPECT_EQ("channels catalogue check countries completion format",
            Offered("tunedex c") + " " + Offered("tunedex f"));
  EXPECT_EQ("next", Offered("tunedex channels n"));
  EXPECT_EQ("list", Offered("tunedex --dir x --json lnbs ''"));
  EXPECT_EQ("favor find", Offered("tunedex --signal channels channels fa") + " " +
                              Offered("tunedex channels fi"));
}

TEST(Completion, OffersOptionsOfTheCommandAndTheGlobalOnes) {
  EXPECT_EQ("--service --signal", Offered("tunedex channels list --s"));
  EXPECT_EQ("--signal", Offered("tunedex satellites list --s"));
  EXPECT_EQ("--replace-unreadable", Offered("tunedex --rep"));
}

TEST(Completion, OffersWhatOptionsAndArgumentsTake) {
  EXPECT_EQ("DVBSatellite DVBTerrestrial DVBHandheld", Offered("tunedex --signal DVB"));
  EXPECT_EQ("tv radio data other all", Offered("tunedex channels list --service ''"));
  EXPECT_EQ("DEU", Offered("tunedex --country DE"));
  EXPECT_EQ("number service", Offered("tunedex channels sort ''"));
  EXPECT_EQ("plain preformatted", Offered("tunedex format p"));
  EXPECT_EQ("plain preformatted", Offered("tunedex --format ''"));
  EXPECT_EQ("plain preformatted", Offered("tunedex channels list --format ''"));
  EXPECT_EQ("csv", Offered("tunedex channels export --format c"));
  EXPECT_EQ("json", Offered("tunedex --json channels import x --format j"));
  EXPECT_EQ("/usr", Offered("tunedex --dir /us"));
  EXPECT_EQ("", Offered("tunedex channels add --name c"));
}

TEST(Completion, IsThereForZsh) {
  const Outcome script = RunTool({"completion", "zsh"});
  ExpectStatus(0, script);
  EXPECT_TRUE(script.out.starts_with("#compdef tunedex\n"));
  EXPECT_NE(std::string::npos, script.out.find("\"channels sort\") known=(number service)"));
}

}  // namespace

}  // namespace zortunedex::kit::tool
