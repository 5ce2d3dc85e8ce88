// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "imageloadertest.h"

#include "markdown/images/networkimagemodel.h"

#include <QSignalSpy>

#include <unordered_set>

namespace velto::markdown
{
namespace
{

using imagestate::Empty;
using imagestate::Failure;
using imagestate::Success;

struct SourceHash
{
    std::size_t operator()(const ImageSource &source) const { return qHash(source); }
};

TEST(ImageSource, DiffersByAddressAndByScale)
{
    const QUrl a(QStringLiteral("http://a.example/"));
    const QUrl b(QStringLiteral("http://b.example/"));
    const std::unordered_set<ImageSource, SourceHash> sources{{a, 1}, {a, 2}, {b, 1}, {a, 1}};
    EXPECT_EQ(sources.size(), 3U);
}

class Model : public ImageLoaderTest
{
protected:
    Model() { m_model.setImageLoader(m_loader.get()); }

    [[nodiscard]] std::optional<ImageSource> source(const QString &path, qreal scale = 1) const
    {
        return ImageSource{m_server.url(path), scale};
    }
    template<typename State>
    [[nodiscard]] bool becomes()
    {
        return test::waitUntil([this] { return std::holds_alternative<State>(m_model.image()); });
    }
    [[nodiscard]] QSizeF idealSize() const
    {
        const auto *success = std::get_if<Success>(&m_model.image());
        return success != nullptr ? success->idealSize : QSizeF();
    }
    /// The place of another reader of the same pictures, to know when the loader has seen them.
    [[nodiscard]] bool isLoaded(const QString &path) { return load(path).has_value(); }

    NetworkImageModel m_model;
    QSignalSpy m_changes{&m_model, &NetworkImageModel::imageChanged};
};

TEST_F(Model, IsEmptyAtFirst)
{
    EXPECT_TRUE(std::holds_alternative<Empty>(m_model.image()));
    EXPECT_EQ(m_model.source(), std::nullopt);
}

TEST_F(Model, ShowsItsPicture)
{
    answerWith(test::png({6, 4}));
    m_model.setSource(source(m_path));
    EXPECT_TRUE(std::holds_alternative<Empty>(m_model.image()));
    ASSERT_TRUE(becomes<Success>());
    EXPECT_EQ(idealSize(), QSizeF(6, 4));
    EXPECT_EQ(m_changes.size(), 1);
}

TEST_F(Model, AScaleOfTwoHalvesTheIdealSize)
{
    answerWith(test::png({6, 5}));
    m_model.setSource(source(m_path, 2));
    ASSERT_TRUE(becomes<Success>());
    EXPECT_EQ(idealSize(), QSizeF(3, 2.5));
    EXPECT_EQ(std::get<Success>(m_model.image()).image.size(), QSize(6, 5));
}

TEST_F(Model, AScaleOfNothingIsOne)
{
    answerWith(test::png({6, 4}));
    m_model.setSource(source(m_path, 0));
    ASSERT_TRUE(becomes<Success>());
    EXPECT_EQ(idealSize(), QSizeF(6, 4));
}

class ModelFailure : public Model, public testing::WithParamInterface<int>
{};

TEST_P(ModelFailure, ShowsThatItFailed)
{
    answerWith(test::png({2, 2}), GetParam());
    m_model.setSource(source(m_path));
    EXPECT_TRUE(becomes<Failure>());
}

INSTANTIATE_TEST_SUITE_P(All, ModelFailure, testing::Values(404, 500));

TEST_F(Model, BytesThatAreNoPictureAreAFailureToo)
{
    answerWith("no picture");
    m_model.setSource(source(m_path));
    EXPECT_TRUE(becomes<Failure>());
}

TEST_F(Model, AnEqualSourceLoadsNothing)
{
    answerWith({}, 404);
    m_model.setSource(source(m_path));
    ASSERT_TRUE(becomes<Failure>());
    QSignalSpy sources(&m_model, &NetworkImageModel::sourceChanged);
    answerWith(test::png({2, 2}));
    m_model.setSource(source(m_path));
    EXPECT_EQ(sources.size(), 0);
    ASSERT_TRUE(isLoaded(m_path));
    EXPECT_TRUE(std::holds_alternative<Failure>(m_model.image()));
}

TEST_F(Model, AnotherScaleIsAnotherSource)
{
    answerWith(test::png({4, 4}));
    m_model.setSource(source(m_path, 1));
    ASSERT_TRUE(becomes<Success>());
    m_model.setSource(source(m_path, 2));
    ASSERT_TRUE(becomes<Success>());
    EXPECT_EQ(idealSize(), QSizeF(2, 2));
    EXPECT_EQ(requests(), 1);
}

TEST_F(Model, WithoutASourceThePictureStays)
{
    answerWith(test::png({4, 4}));
    m_model.setSource(source(m_path));
    ASSERT_TRUE(becomes<Success>());
    m_model.setSource(std::nullopt);
    EXPECT_EQ(m_model.source(), std::nullopt);
    EXPECT_EQ(idealSize(), QSizeF(4, 4));
    EXPECT_EQ(m_changes.size(), 1);
}

TEST_F(Model, ThePictureStaysWhileTheNextOneLoads)
{
    answerWith(test::png({4, 4}));
    m_model.setSource(source(m_path));
    ASSERT_TRUE(becomes<Success>());
    m_server.on("/next", [this](const test::RecordedRequest &, const test::Exchange &exchange) {
        m_held.append(exchange);
    });
    m_model.setSource(source(QStringLiteral("/next")));
    ASSERT_TRUE(isHolding(1));
    EXPECT_EQ(idealSize(), QSizeF(4, 4));
    m_held.first().respond(404);
    EXPECT_TRUE(becomes<Failure>());
}

TEST_F(Model, AKnownPictureShowsAtOnce)
{
    answerWith(test::png({4, 4}));
    ASSERT_TRUE(isLoaded(m_path));
    m_model.setSource(source(m_path));
    EXPECT_EQ(idealSize(), QSizeF(4, 4));
}

TEST_F(Model, AnotherSourceEndsTheFormerRequest)
{
    hold();
    m_model.setSource(source(m_path));
    ASSERT_TRUE(isHolding(1));
    m_server.on("/next", test::answer(200, test::png({3, 3})));
    m_model.setSource(source(QStringLiteral("/next")));
    EXPECT_TRUE(isClosed(0));
    ASSERT_TRUE(becomes<Success>());
    EXPECT_EQ(idealSize(), QSizeF(3, 3));
    EXPECT_EQ(m_changes.size(), 1);
}

TEST_F(Model, NoSourceEndsTheFormerRequest)
{
    hold();
    m_model.setSource(source(m_path));
    ASSERT_TRUE(isHolding(1));
    m_model.setSource(std::nullopt);
    EXPECT_TRUE(isClosed(0));
    EXPECT_TRUE(std::holds_alternative<Empty>(m_model.image()));
}

TEST_F(Model, ALateAnswerToTheFormerSourceIsNotShown)
{
    hold();
    NetworkImageModel other;
    other.setImageLoader(m_loader.get());
    other.setSource(source(m_path)); // keeps the request alive
    m_model.setSource(source(m_path));
    ASSERT_TRUE(isHolding(1));
    m_model.setSource(std::nullopt);
    m_held.first().respond(200, test::png({2, 2}));
    ASSERT_TRUE(test::waitUntil([&] { return std::holds_alternative<Success>(other.image()); }));
    EXPECT_EQ(m_changes.size(), 0);
}

TEST_F(Model, ItsEndEndsTheRequest)
{
    hold();
    auto model = std::make_unique<NetworkImageModel>();
    model->setImageLoader(m_loader.get());
    model->setSource(source(m_path));
    ASSERT_TRUE(isHolding(1));
    model.reset();
    EXPECT_TRUE(isClosed(0));
}

TEST_F(Model, LeavingEndsTheRequestAndComingBackMakesAnother)
{
    hold();
    m_model.setSource(source(m_path));
    ASSERT_TRUE(isHolding(1));
    m_model.setShown(false);
    ASSERT_TRUE(isClosed(0));
    EXPECT_TRUE(std::holds_alternative<Empty>(m_model.image()));
    answerWith(test::png({2, 2}));
    m_model.setShown(true);
    EXPECT_TRUE(becomes<Success>());
    EXPECT_EQ(requests(), 2);
}

TEST_F(Model, LoadsNothingWhileNobodyLooks)
{
    m_model.setShown(false);
    m_model.setSource(source(m_path));
    answerWith(test::png({2, 2}));
    m_server.on("/other", test::answer(200, test::png({2, 2})));
    ASSERT_TRUE(isLoaded(QStringLiteral("/other")));
    EXPECT_EQ(requests(), 0);
}

TEST_F(Model, WaitsForItsLoader)
{
    answerWith(test::png({2, 2}));
    m_model.setImageLoader(nullptr);
    m_model.setSource(source(m_path));
    EXPECT_TRUE(std::holds_alternative<Empty>(m_model.image()));
    m_model.setImageLoader(m_loader.get());
    EXPECT_TRUE(becomes<Success>());
}

TEST_F(Model, TheEndOfTheLoaderIsNoFailure)
{
    hold();
    m_model.setSource(source(m_path));
    ASSERT_TRUE(isHolding(1));
    m_loader.reset();
    EXPECT_TRUE(isClosed(0));
    EXPECT_TRUE(std::holds_alternative<Empty>(m_model.image()));
}

TEST_F(Model, TwoModelsOfOneAddressMakeOneRequest)
{
    answerWith(test::png({2, 2}));
    NetworkImageModel other;
    other.setImageLoader(m_loader.get());
    m_model.setSource(source(m_path));
    other.setSource(source(m_path));
    ASSERT_TRUE(becomes<Success>());
    ASSERT_TRUE(test::waitUntil([&] { return std::holds_alternative<Success>(other.image()); }));
    EXPECT_EQ(requests(), 1);
}

} // namespace
} // namespace velto::markdown
