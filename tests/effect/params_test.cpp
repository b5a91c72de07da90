// PARAMS_SETUP: the four parameters, byte for byte, and hosts that refuse one.
#include <cstring>
#include <string>

#include "tests/support/effect_fixture.h"
#include "tests/support/texts.h"

namespace twtest {
namespace {

class Params : public EffectTest {
protected:
    void openForParams() {
        openHost(host_sim::afterEffects()).registerEffect();
        host->globalSetup();
    }

    const PF_ParamDef& declared(int index) const { return host->params().at(index).definition; }
};

PF_ParamDef cleared() {
    PF_ParamDef def;
    std::memset(&def, 0, sizeof def);
    return def;
}

// Where two definitions differ; -1 for nowhere.
int firstDifference(const PF_ParamDef& a, const PF_ParamDef& b) {
    const auto* bytesA = reinterpret_cast<const unsigned char*>(&a);
    const auto* bytesB = reinterpret_cast<const unsigned char*>(&b);
    for (std::size_t i = 0; i < sizeof a; ++i) {
        if (bytesA[i] != bytesB[i]) return static_cast<int>(i);
    }
    return -1;
}

PF_ParamDef expectedButton(const char* name, A_long id, const PF_ParamDef& declared) {
    PF_ParamDef expected = cleared();
    expected.param_type = 15;
    expected.uu.id = id;
    expected.flags = 0x42;
    std::strcpy(expected.name, name);
    expected.u.button_d.u.namesptr = declared.u.button_d.u.namesptr;
    return expected;
}

TEST_F(Params, declaresFourBesidesTheLayer_whenTheHostTakesThem) {
    openForParams();
    const host_sim::CommandResult result = host->paramsSetup();
    EXPECT_EQ(result.error, 0);
    EXPECT_EQ(result.out.num_params, 5);
    EXPECT_EQ(host->params().count(), 5);
}

TEST_F(Params, setsTheNumberOnly_whenTheRecordIsFull) {
    openForParams();
    PF_OutData expected = fullOutData();
    host->outPreset() = expected;
    expected.num_params = 5;
    EXPECT_TRUE(sameBytes(host->paramsSetup().out, expected));
}

TEST_F(Params, declaresAmountAsAPercentage) {
    start();
    PF_ParamDef expected = cleared();
    expected.param_type = 10;
    expected.uu.id = 2;
    std::strcpy(expected.name, "Amount");
    expected.u.fs_d.value = 100.0;
    expected.u.fs_d.valid_max = 100.0f;
    expected.u.fs_d.slider_max = 100.0f;
    expected.u.fs_d.dephault = 100.0f;
    expected.u.fs_d.precision = 1;
    expected.u.fs_d.display_flags = 1;
    EXPECT_EQ(firstDifference(declared(1), expected), -1);
}

TEST_F(Params, declaresTheLutWithoutAControl) {
    start();
    const PF_ArbitraryDef& data = declared(2).u.arb_d;
    EXPECT_NE(data.dephault, nullptr);
    EXPECT_NE(data.refconPV, nullptr);
    PF_ParamDef expected = cleared();
    expected.param_type = 11;
    expected.uu.id = 4;
    std::strcpy(expected.name, "LUT");
    expected.flags = 2;
    expected.ui_flags = 8;
    expected.ui_width = 1;
    expected.ui_height = 1;
    expected.u.arb_d.id = 4;
    expected.u.arb_d.dephault = data.dephault;
    expected.u.arb_d.refconPV = data.refconPV;
    EXPECT_EQ(firstDifference(declared(2), expected), -1);
}

TEST_F(Params, makesADefaultThatMeansNoLut) {
    start();
    const PF_ArbitraryDef& data = declared(2).u.arb_d;
    EXPECT_EQ(host->handles().contents(data.dephault), emptyLut());
    EXPECT_EQ(*static_cast<const char*>(data.refconPV), 0);
}

TEST_F(Params, declaresTheLutButton_withABlankAfterItsName) {
    start();
    EXPECT_EQ(firstDifference(declared(3), expectedButton("LUT ", 5, declared(3))), -1);
    EXPECT_EQ(host->params().at(3).label, "Change LUT");
}

TEST_F(Params, declaresTheEditButton) {
    start();
    EXPECT_EQ(firstDifference(declared(4), expectedButton("Match", 7, declared(4))), -1);
    EXPECT_EQ(host->params().at(4).label, "Edit LUT");
}

TEST_F(Params, isTheSame_inPremierePro) {
    start(host_sim::premierePro());
    EXPECT_EQ(host->params().count(), 5);
    EXPECT_EQ(declared(3).uu.id, 5);
    EXPECT_EQ(declared(2).ui_flags, 8);
}

TEST_F(Params, logsNothing) {
    openForParams();
    newLogLines();
    host->paramsSetup();
    EXPECT_EQ(newLogLines(), Lines());
}

TEST_F(Params, givesEachInstanceNoLutAndFullAmount) {
    host_sim::Instance& effect = start();
    EXPECT_EQ(effect.slider(kAmount), 100.0);
    EXPECT_EQ(host->handles().contents(effect.arbitrary(kLut)), emptyLut());
    EXPECT_NE(effect.arbitrary(kLut), declared(kLut).u.arb_d.dephault);
    EXPECT_EQ(effect.label(kLutButton), "Change LUT");
    EXPECT_EQ(effect.label(kEditButton), "Edit LUT");
}

class RefusedParam : public Params, public ::testing::WithParamInterface<int> {};

TEST_P(RefusedParam, passesTheErrorBackAndDeclaresNoMore) {
    const int refused = GetParam();
    openForParams();
    host->outPreset().num_params = 77;
    host->refusals().fail(host_sim::Refusal::kAddParam, refused, PF_Err_BAD_CALLBACK_PARAM);
    const host_sim::CommandResult result = host->paramsSetup();
    EXPECT_EQ(result.error, 516);
    EXPECT_EQ(result.out.num_params, 77);
    EXPECT_EQ(host->params().count(), refused);  // the layer, and those before the refused one
}

INSTANTIATE_TEST_SUITE_P(EachOne, RefusedParam, ::testing::Values(1, 2, 3, 4));

TEST_F(Params, makesNoDefault_whenAmountIsRefused) {
    openForParams();
    host->refusals().fail(host_sim::Refusal::kAddParam, 1, PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(host->paramsSetup().error, 4);
    EXPECT_EQ(host->handles().counts().allocations, 0U);
}

TEST_F(Params, leavesTheRefusedDefaultToTheHost) {
    openForParams();
    host->refusals().fail(host_sim::Refusal::kAddParam, 2, PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(host->paramsSetup().error, 4);
    EXPECT_EQ(host->handles().counts().allocations, 1U);
}

}  // namespace
}  // namespace twtest
