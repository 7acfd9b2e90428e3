#include "tessaline/frame/catalogue.h"

#include "tessaline/values/text.h"

namespace tessaline {

namespace {

constexpr ClassIdentity kClasses[] = {
    {"DataConstants", "202d9b36-5bf6-47d9-9027-b08472520531",
     "f94734b8-576b-45b3-99ff-0363d8ff8ad4", "", 0},
    {"DataTypeController", "6b9bef98-a62a-48b4-99b8-11b5154add15",
     "344d6216-2c7e-4fe7-b75a-2d60d2ee83fc", "", 0},
    {"DiscreteValidator", "06597cdc-1d3e-4d88-8283-139e39cf125e",
     "c9533ae1-d8f6-4711-ae31-0816ea63857c", "", 0},
    {"LengthValidator", "4c26a126-935a-46bf-9f84-9f60e6110eb0",
     "c271f577-ca89-42eb-bb6b-13a33b868f3d", "", 0},
    {"RangeValidator", "24665ff4-4ee1-4709-b9bf-704c66b242ed",
     "eb11690b-669a-4201-9246-237b77a8c774", "", 0},
    {"Logger", "51440d4a-6433-407e-938f-fda631d8a37e", "d613d1be-ff70-46ac-9128-3e4d2231ff38", "",
     0},
    {"Dictionary", "e1d48a25-2ba1-422b-a13d-5eb6da9e27e2", "8bbe8e74-606a-4b9c-8322-016856e4174a",
     "", 0},
    {"cTooltip", "69d6cf38-7985-4ec1-b5ee-5c04e5b2ebe0", "4878f50c-0c1f-4e52-88ed-9d3e6a05226a", "",
     0},
    {"DTMDataComboBox", "d5fe71b2-19b7-4ea0-8a3d-f399465c92dc",
     "a3fc96e4-4fff-418a-8acc-c45ea2a99769", "06e942cd-3a97-4cc8-86b4-7b6d4fe67d03", 30022},
    {"DTMDataLabel", "5fcdd1ee-f5d6-4127-b72a-74aa1f02880b", "cd629900-d001-4ebb-80b0-54b9c37acb2a",
     "8ab690a8-c524-4c57-bd28-1320e82d279d", 30021},
    {"DTMDataTextBox", "2902f4b1-6052-4c62-9d26-d8ba1e7ed49a",
     "5dd65162-8880-499e-b3d7-a1be8de46e5f", "a27f6da4-3909-4926-a803-2d4776c2fba2", 30020},
    {"DTMDataCheckBox", "ae5fdc5d-2bf6-41a8-8aaf-dcb57caaec3e",
     "10a272bf-f4ce-4ddb-b7b7-a345bc788b9c", "e1ec0106-7358-460c-9f77-d2862e098f93", 30019},
    {"DTMStatusControl", "04a70472-3a24-496b-a52d-07bd8acdda3a",
     "c25b14f5-be0e-4fd1-bb36-6e61bdcb8410", "5add0526-6ecd-4638-928a-c3bf6a4765aa", 30018},
    {"DTMDataGuageControl", "ec2ca39f-6156-4f06-a223-7f6cdcc8c704",
     "29fcf34a-7572-4d12-b0d5-6f02dbe06d9a", "ad4ec209-b31d-48c6-a4be-fb9de9b6af21", 30017},
    {"DTMDataTrendControl", "0b56c75a-0bb7-42bc-9561-a3fbb5b40c49",
     "5fe000cd-de2d-4b11-a39c-216dd8fbdf21", "fa440ba6-f0fc-4be8-901f-b8d5411c22c4", 30016},
    {"DTMDataPictureButton", "0cdb5272-3597-4187-90f3-da703d8c5d3f",
     "55d551ff-72ee-4615-8deb-7a72519c9218", "9ed742c7-d649-4c94-b29d-c5fb34dbed60", 30015},
    {"DTMListControl", "b00d2d9c-c1d2-4c6a-9e2f-e4c12c135ba3",
     "4f36211e-409e-44ee-ae57-b299ab3bd466", "f97baeea-d186-4429-b5e8-8b14abdab271", 30014},
    {"DTMLaunchButton", "4f20b52a-cd11-4c97-9f31-3cff15e8682e",
     "b547e54d-b3b1-4b52-9ec2-0a70bbb9b857", "75ed553e-8331-471f-ab1e-144d84d63f4b", 30013},
    {"DTMFunctionButton", "ff2e4c8e-e4dc-450f-93f3-9926a01e212a",
     "22d5b8c6-4a44-4005-91af-9e51caef35c9", "3fd72a60-ce49-4c9b-ae91-2e6c1a1af298", 30012},
    {"DTMDynamicTrendControl", "1cbdfcab-2270-4e99-81ad-f1b1803ba33b",
     "45269c3b-a8fd-499b-9c44-692acf634a9f", "a0898133-e262-4cd6-ad9c-1c79a2549f89", 30011},
    {"DTMDateTimeControl", "2bfb560b-ec5d-4072-8e56-f73bea713c48",
     "d23c90db-7cc2-4c16-a816-548a342786f5", "3223d3e1-97c6-4f69-9243-b99e51e7e23c", 30010},
    {"DtmStaticLabel", "5e0fc14f-3617-4c61-89e0-5d30a32ce3c7",
     "10880b8d-36d8-4607-9eb3-cf598255a18b", "6961d69d-bf7a-435e-b725-5cdd07a0aca2", 30009},
    {"DtmNavigation", "5589c0f8-8cbc-4cd7-814f-0fdd6eaabb5a",
     "c4c4be4e-d9c2-4606-b566-fceeb49a16e7", "a5b5bbd9-12b0-414b-9ff2-22724985231c", 30008},
    {"DTMDataAngularGuage", "e5ae0825-c2c1-44a7-95ba-53ce0962c731",
     "433ad582-b166-47c0-aeaa-d41acd267fbe", "e0dcf3d4-f51f-43d4-af5e-957ecb800a3e", 30007},
    {"DTMMultiTrendControl", "7b9e0d1c-190a-45fa-a9a8-bc5c58170572",
     "b0d2cd70-820f-40e3-b92a-244dd19ede79", "91599710-81f9-4a48-9482-ce0e92233fca", 30006},
    {"DTMDynamicGuageControl", "aa6079ee-b27a-4ede-81dc-e911756fc011",
     "32c3a772-7754-4c74-9f78-8ee92a2c4cce", "6c7735d4-a1c9-4f1a-86be-4090e4b02a3c", 30005},
    {"DTMWaveFormControl", "e6f2b4b3-5134-4b59-8328-bcb59cf7256b",
     "73365c04-9ff6-4533-a0ff-d10158f2e5f2", "1cb851a4-5808-443c-810a-4e90c4eceaa1", 30004},
    {"DTMDataPictureFnButton", "d5c5795e-6851-456f-b52e-22633db268fe",
     "01d146ea-d21e-4715-9886-d1662bc34e2c", "65ca8909-71ea-4a15-bf78-b5db759813b2", 30003},
    {"DTMDataMultiLnTextBox", "69376166-08c2-494c-887b-eb7c25065e4a",
     "b05e5e6e-c438-47a2-8810-c1f593e842f9", "99aa395b-cfb3-4b0c-8684-5fefa43b0a26", 30002},
    {"DTMDataComboBox2", "24fb4f54-a919-4423-9c16-eb1ffae15a2e",
     "53ce2fa8-adfc-48e5-9bc1-7c669b12414c", "8d96cfbb-f793-4661-8a86-61a9f773f497", 30001},
    {"DTMDataLaunchLabel", "3c7f35aa-666e-4b07-8cfc-b8bb57ffcfd0",
     "3b95de24-6667-4964-94e2-22b6c32a947c", "b7303a35-73e9-491c-97c7-3096f0e9a1ca", 30000},
};

std::string_view withoutBraces(std::string_view id) {
  if (id.size() >= 2 && id.front() == '{' && id.back() == '}') return id.substr(1, id.size() - 2);
  return id;
}

}  // namespace

std::span<const ClassIdentity> classIdentities() { return kClasses; }

const ClassIdentity* findClassIdentity(std::string_view key) {
  const std::string_view id = withoutBraces(key);
  for (const ClassIdentity& identity : kClasses) {
    if (equalsIgnoreCaseAscii(identity.name, key) || equalsIgnoreCaseAscii(identity.classId, id) ||
        equalsIgnoreCaseAscii(identity.progId(), key)) {
      return &identity;
    }
  }
  return nullptr;
}

}  // namespace tessaline
