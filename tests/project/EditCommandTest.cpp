// The edit commands on small scenes worked out by hand: what each changes, logs, asks
// the windows for, and that one undo takes each back.
#include <gtest/gtest.h>

#include "edit/Clipboard.h"
#include "edit/Group.h"
#include "edit/Layer.h"
#include "effect/EffectBase.h"
#include "event/Subscriptions.h"
#include "CommandTestSupport.h"

namespace {

using namespace CommandTest;
using Edit::Object;

class EditCommandTest : public CommandTestBase {};

TEST_F(EditCommandTest, CommandsWithoutTargetsDoNothingAndLogNothing) {
  place(0, 0, 29);
  clearRecords();
  const std::string before = text();
  prompt.lengths = {10, 10};
  command.deleteObject();
  command.splitObject(10);
  command.cutObject(true);
  command.trimObject();
  command.copyObject();
  command.duplicateObject();
  command.pasteObject();
  command.setGroup();
  command.clearGroup();
  command.removeObjectLeftGap();
  command.changeObjectLength();
  command.separateAudioObject();
  command.createSection(10);
  command.deleteSection(10);
  EXPECT_TRUE(log.empty());
  EXPECT_TRUE(requests.empty());
  EXPECT_EQ(text(), before);
  EXPECT_FALSE(history.canUndo());
  EXPECT_EQ(prompt.lengths.size(), 2u);  // nobody was asked

  // An object on a locked row is a target only for what leaves it as it is.
  scene().getLayer(0).info->lock = true;
  select({scene().getLayer(0).objects.front()});
  const std::string locked = text();
  command.deleteObject();
  command.splitObject(10);
  command.cutObject(false);
  EXPECT_EQ(text(), locked);
  EXPECT_TRUE(log.empty());
  command.copyObject();
  EXPECT_EQ(edit.clipboard().objects().size(), 1u);
}

TEST_F(EditCommandTest, SplitCutsTheTargetsThatHoldTheFrameAndGivesEachSideItsGroup) {
  const auto a = place(0, 0, 29);
  const auto b = place(1, 0, 9);   // ends before the frame: left alone
  const auto c = place(2, 5, 40);
  const auto group = std::make_shared<Edit::Group>();
  Edit::Group::join(group, *a);
  Edit::Group::join(group, *b);
  Edit::Group::join(group, *c);
  select({a, b, c});
  const std::string before = text();
  scene().focusObject = c;

  command.splitObject(20);
  EXPECT_EQ(log, (std::vector<std::string>{"Edit::EditCommand::splitObject: split object num=3 frame=20"}));
  EXPECT_EQ(row(0), (Spans{{0, 19}, {20, 29}}));
  EXPECT_EQ(row(1), (Spans{{0, 9}}));
  EXPECT_EQ(row(2), (Spans{{5, 19}, {20, 40}}));
  const auto& left0 = scene().getLayer(0).objects[0];
  const auto& right0 = scene().getLayer(0).objects[1];
  const auto& left2 = scene().getLayer(2).objects[0];
  const auto& right2 = scene().getLayer(2).objects[1];
  EXPECT_EQ(left0->group, left2->group);
  EXPECT_EQ(right0->group, right2->group);
  EXPECT_NE(left0->group, right0->group);
  EXPECT_EQ(b->group, group);
  EXPECT_EQ(scene().focusObject, right2);
  EXPECT_EQ(requests.back(), (std::vector<Request>{Request::Update, Request::Time, Request::Object, Request::Focus}));

  // One undo brings back the very objects that were split, in their group.
  history.undo();
  EXPECT_EQ(text(), before);
  EXPECT_EQ(scene().getLayer(0).objects.front(), a);
  EXPECT_EQ(a->group, group);
  EXPECT_EQ(group->size(), 3u);
}

TEST_F(EditCommandTest, DeletingTheFocusObjectClearsTheFocusAndSaysSo) {
  const auto a = place(0, 0, 29);
  scene().focusObject = a;
  command.deleteObject();
  EXPECT_EQ(scene().focusObject, nullptr);
  EXPECT_EQ(requests.back(), (std::vector<Request>{Request::Update, Request::Time, Request::Object, Request::Focus}));
  EXPECT_EQ(log.back(), "Edit::EditCommand::deleteObject: delete object num=1");
}

TEST_F(EditCommandTest, RippleCutClosesUpOnlyTheRowsOfTheCutObjects) {
  const auto cut = place(0, 10, 19);
  place(0, 30, 39);
  place(1, 30, 39);
  select({cut});
  command.cutObject(true);
  EXPECT_EQ(row(0), (Spans{{20, 29}}));
  EXPECT_EQ(row(1), (Spans{{30, 39}}));
  ASSERT_EQ(edit.clipboard().objects().size(), 1u);
  EXPECT_EQ(edit.clipboard().objects().front()->start, 10);
  EXPECT_TRUE(scene().selectedObjects.empty());
}

// The range is frames 10..19 (a = 10, b = 20); each row holds one target.
TEST_F(EditCommandTest, RangeCutKeepsWhatLiesOutsideAndTakesWhatLiesInside) {
  const auto across = place(0, 0, 29);  // cut at a and b
  const auto left = place(1, 0, 14);    // cut at a
  const auto right = place(2, 15, 29);  // cut at b
  const auto inside = place(3, 12, 17);
  const auto outside = place(4, 25, 29);
  select({across, left, right, inside, outside});
  scene().selectionRangeStart = 10;
  scene().selectionRangeEnd = 19;
  scene().cursorFrame = 15;
  const std::string before = text();

  command.cutObject(false);
  EXPECT_EQ(log.back(), "Edit::EditCommand::cutObject: cut range object num=5");
  EXPECT_EQ(row(0), (Spans{{0, 9}, {20, 29}}));
  EXPECT_EQ(row(1), (Spans{{0, 9}}));
  EXPECT_EQ(row(2), (Spans{{20, 29}}));
  EXPECT_EQ(row(3), Spans{});
  EXPECT_EQ(row(4), (Spans{{25, 29}}));
  Spans taken;
  for (const auto& piece : edit.clipboard().objects()) taken.emplace_back(piece->start, piece->end);
  EXPECT_EQ(taken, (Spans{{10, 19}, {10, 14}, {15, 19}, {12, 17}}));
  history.undo();
  EXPECT_EQ(text(), before);

  // With ripple the pieces' stretches close and the cursor, in the range, goes to its
  // start; the range is cleared.
  select({across, left, right, inside, outside});
  command.cutObject(true);
  EXPECT_EQ(row(0), (Spans{{0, 9}, {10, 19}}));
  EXPECT_EQ(row(2), (Spans{{15, 24}}));  // only the piece's own stretch closes
  EXPECT_EQ(row(4), (Spans{{25, 29}}));
  EXPECT_EQ(scene().cursorFrame, 10);
  EXPECT_EQ(scene().selectionRangeStart, -1);
}

TEST_F(EditCommandTest, TrimKeepsTheRangeAndMovesItBackToTheObjectsStart) {
  const auto across = place(0, 0, 29);
  const auto left = place(1, 0, 14);
  const auto right = place(2, 15, 29);
  select({across, left, right});
  command.trimObject();  // no range: nothing
  EXPECT_TRUE(log.empty());

  scene().selectionRangeStart = 10;
  scene().selectionRangeEnd = 19;
  command.trimObject();
  EXPECT_EQ(log.back(), "Edit::EditCommand::trimObject: clip object num=3");
  EXPECT_EQ(row(0), (Spans{{0, 9}}));
  EXPECT_EQ(row(1), (Spans{{0, 4}}));
  EXPECT_EQ(row(2), (Spans{{15, 19}}));
  EXPECT_EQ(edit.clipboard().objects().size(), 4u);
  EXPECT_EQ(scene().selectionRangeEnd, -1);
}

TEST_F(EditCommandTest, GroupsNeedTwoSelectedObjects) {
  const auto a = place(0, 0, 9);
  const auto b = place(1, 0, 9);
  select({a});
  command.setGroup();
  EXPECT_EQ(a->group, nullptr);
  EXPECT_TRUE(log.empty());
  select({b});
  command.setGroup();
  ASSERT_NE(a->group, nullptr);
  EXPECT_EQ(a->group, b->group);
  EXPECT_EQ(requests.back(), std::vector<Request>{});
  command.clearGroup();
  EXPECT_EQ(a->group, nullptr);
  history.undo();
  EXPECT_EQ(a->group, b->group);
}

TEST_F(EditCommandTest, SectionPointsAndLengths) {
  const auto object = place(0, 0, 99);
  command.createSection(object, 10);
  command.createSection(object, 30);
  command.createSection(object, 31);
  EXPECT_EQ(object->sections, (std::vector<std::int32_t>{10, 30, 31}));
  command.changeSectionSpaceEvenly(object);
  EXPECT_EQ(object->sections, (std::vector<std::int32_t>{25, 50, 75}));
  EXPECT_EQ(requests.back(), (std::vector<Request>{Request::Update, Request::Reset, Request::Time, Request::Object}));

  select({object});
  command.deleteSection(49);  // no point there
  command.deleteSection(50);
  EXPECT_EQ(object->sections, (std::vector<std::int32_t>{25, 75}));
  EXPECT_EQ(log.back(), "Edit::EditCommand::deleteSection: delete section frame=50 num=1");

  // A cancelled dialog changes nothing; a length applies to the section the prompt showed.
  command.changeSectionLength(object, 1);
  EXPECT_EQ(prompt.shownLengths.back(), 50);
  prompt.lengths = {20};
  command.changeSectionLength(object, 1);
  EXPECT_EQ(object->sections, (std::vector<std::int32_t>{25, 45}));
  EXPECT_EQ(object->end, 69);
  prompt.lengths = {10};
  command.changeObjectLength();
  EXPECT_EQ(object->end, 9);
  EXPECT_EQ(log.back(), "Edit::EditCommand::changeObjectLength: change object length num=1 length=10");
}

TEST_F(EditCommandTest, InsertingEmptyFramesShiftsFromTheCursor) {
  place(0, 0, 9);
  place(0, 20, 29);
  scene().cursorFrame = 15;
  command.insertNullFrame();  // cancelled
  EXPECT_EQ(row(0), (Spans{{0, 9}, {20, 29}}));
  prompt.lengths = {5};
  command.insertNullFrame();
  EXPECT_EQ(row(0), (Spans{{0, 9}, {25, 34}}));
  EXPECT_EQ(log.back(), "Edit::EditCommand::insertNullFrame: insert null frame length=5");
}

TEST_F(EditCommandTest, SwitchesOfObjectsAndEffects) {
  const auto media = place(0, 0, 9, {L"図形", L"ぼかし"});
  const auto filters = place(1, 0, 9, {L"ぼかし", L"色調補正"});
  select({media, filters});
  // Without Ctrl only the object; a media object by its top effect, a filter object by all.
  command.setEnableObject(filters, false, false);
  EXPECT_TRUE(filters->effects[0]->disable && filters->effects[1]->disable);
  EXPECT_FALSE(media->effects[0]->disable);
  command.setEnableObject(media, false, true);
  EXPECT_EQ(log.back(), "Edit::EditCommand::setEnableObject: set enable effect num=2 enable=0");
  EXPECT_TRUE(media->effects[0]->disable);
  EXPECT_FALSE(media->effects[2]->disable);

  command.setLockEffect(media, media->effects[0], true);
  EXPECT_TRUE(media->effects[0]->lock && media->effects[1]->lock);
  EXPECT_FALSE(media->effects[2]->lock);

  command.setEnableClippingObject(media, true);
  EXPECT_TRUE(media->clipping);
  EXPECT_FALSE(media->camera);
  command.setEnableCameraObject(media, true);
  EXPECT_TRUE(media->camera);
  EXPECT_FALSE(media->clipping);

  command.setEffect(media, L"色調補正", media->effects[2], true);
  ASSERT_EQ(media->effects.size(), 3u);
  EXPECT_STREQ(media->effects[2]->name(), L"色調補正");
  command.removeEffect(media, media->effects[2]);
  EXPECT_EQ(media->effects.size(), 2u);
  EXPECT_EQ(log.back(), "Edit::EditCommand::removeEffect: remove effect [色調補正] layer=0 frame=0");
}

TEST_F(EditCommandTest, RowsComeBackWithTheirObjects) {
  const auto a = place(0, 0, 9);
  const auto b = place(1, 0, 9);
  const std::string before = text();
  command.deleteLayer(0);
  EXPECT_EQ(a->layer, -1);
  EXPECT_EQ(b->layer, 0);
  history.undo();
  EXPECT_EQ(text(), before);
  command.insertLayer(0);
  EXPECT_EQ(a->layer, 1);
  prompt.texts = {L"背景"};
  command.renameLayer(1);
  EXPECT_EQ(scene().getLayer(1).info->name, L"背景");
  command.toggleOtherLayersHide(1);
  EXPECT_TRUE(scene().getLayer(0).info->hide && scene().getLayer(2).info->hide);
  command.toggleOtherLayersHide(1);
  EXPECT_FALSE(scene().getLayer(0).info->hide || scene().getLayer(2).info->hide);
}

// A video file with sound in two tracks.
class SoundSource final : public Effect::EffectInstance<SoundSource> {
 public:
  static inline const Effect::EffectInfo kInfo{L"音声付き動画", Effect::EffectType::Input, Effect::EffectMedia::Both,
                                               Effect::EffectMedia::Both, L"", {}};
  SoundSource() : EffectInstance(kInfo) {}
  std::int32_t getMediaFlag(std::int32_t query) const override { return query == 0 ? 1 : 2; }
  bool itemEvent(Effect::ItemEvent& event) override {
    tracks.push_back(event.value);
    return true;
  }
  static inline std::vector<std::int32_t> tracks;
};

TEST_F(EditCommandTest, SeparatingSoundPutsOneCopyPerTrackOnFreeRows) {
  effects->registerEffect<SoundSource>();
  clearRecords();
  const auto image = place(0, 0, 29);
  select({image});
  command.separateAudioObject();
  EXPECT_TRUE(log.empty());

  const auto video = place(3, 0, 29, {});
  video->effects = {std::make_shared<SoundSource>(), effects->createEffect(L"映像再生")};
  place(4, 20, 40);  // row 4 is taken within the video's frames
  scene().selectedObjects.clear();
  select({video});
  command.separateAudioObject();
  EXPECT_EQ(log.back(), "Edit::EditCommand::separateAudioObject: separate audio layer=3");
  EXPECT_STREQ(video->effects[1]->name(), L"標準描画");
  EXPECT_EQ(row(5), (Spans{{0, 29}}));
  EXPECT_EQ(row(6), (Spans{{0, 29}}));
  EXPECT_STREQ(scene().getLayer(5).objects[0]->effects[1]->name(), L"音声再生");
  EXPECT_EQ(SoundSource::tracks, (std::vector<std::int32_t>{0, 1}));
}

// The windows hear of a command on the lists of the event service, after the lock: a
// listener may even open a section of its own.
TEST_F(EditCommandTest, TheWindowsHearOfACommandThroughTheEventLists) {
  place(0, 0, 9);
  std::vector<std::string> heard;
  bool moved = false;
  Event::Subscriptions window;
  window.add(edit.events().objectChanged, [&](const std::shared_ptr<Object>& object) {
    heard.push_back(object ? "object" : "any object");
    if (std::exchange(moved, true)) return;
    Edit::EditSection own(edit);
    own.scene()->cursorFrame = 7;
    own.request(Request::Frame);
  });
  window.add(edit.events().focusChanged, [&](const std::shared_ptr<Object>& object) {
    heard.push_back(object ? "focus on row " + std::to_string(object->layer) : "no focus");
  });
  window.add(edit.events().frameChanged, [&](std::int32_t frame) { heard.push_back("frame " + std::to_string(frame)); });

  command.createObject(L"テキスト", 1, 0);
  EXPECT_EQ(heard, (std::vector<std::string>{"any object", "frame 7", "focus on row 1"}));
  heard.clear();
  command.deleteObject();
  EXPECT_EQ(heard, (std::vector<std::string>{"any object", "no focus"}));
}

}  // namespace
