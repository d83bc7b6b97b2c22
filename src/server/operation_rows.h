#pragma once

#include "bridges/common/results.h"
#include "server/operation.h"
#include "server/payloads.h"

#include <concepts>

// How rows are written. Request and result come from the call's own signature:
//
//     operation<&FileDataBridge::listFiles>("files.list", BridgeCapability::filesList)
//
// A call is a member function of a bridge that takes its request record, the identifier of what it is about, or
// nothing, and answers with a record, a Task of one, or nothing (deletions and acts without a result have builders of
// their own below).

namespace bridge {

namespace detail {

struct NoRequest {};

template <typename T> struct ResultOf {
    using Type = T;
    static constexpr bool waits = false;
};
template <typename T> struct ResultOf<Task<T>> {
    using Type = T;
    static constexpr bool waits = true;
};

// The record on the wire for what a call takes.
template <typename Argument> struct RequestFor { using Type = Argument; };
template <> struct RequestFor<std::string> { using Type = IdentifierPayload; };

template <typename Signature> struct CallShape;
template <typename B, typename R, typename Q> struct CallShape<R (B::*)(Q)> {
    using Bridge = B;
    using Argument = std::remove_cvref_t<Q>;
    using Request = typename RequestFor<Argument>::Type;
    using Result = ResultOf<R>;
};
template <typename B, typename R, typename Q> struct CallShape<R (B::*)(Q) const> : CallShape<R (B::*)(Q)> {};
template <typename B, typename R> struct CallShape<R (B::*)()> {
    using Bridge = B;
    using Argument = NoRequest;
    using Request = NoRequest;
    using Result = ResultOf<R>;
};
template <typename B, typename R> struct CallShape<R (B::*)() const> : CallShape<R (B::*)()> {};

template <typename T, typename... Each> constexpr bool holds(const std::tuple<Each...>*) {
    return (std::same_as<T, Each> || ...);
}

// The bridge of this type, const where the set holds it so.
template <typename Bridge> auto& bridgeOf(const BridgeSet& bridges) {
    if constexpr (holds<Bridge&>(static_cast<const BridgeSet*>(nullptr)))
        return std::get<Bridge&>(bridges);
    else
        return std::get<const Bridge&>(bridges);
}

// Stands for "the row's fixed capability is all".
struct FixedCapability {};

// What every prepared operation shares: the decoded request and the questions about it.
template <typename Request, auto capabilityOf> class Prepared : public PreparedOperation {
public:
    explicit Prepared(Request request) : m_request(std::move(request)) {}

    std::optional<BridgeCapability> dependentCapability(const BridgeSet& bridges) const override {
        using Rule = std::remove_cv_t<decltype(capabilityOf)>;
        if constexpr (std::same_as<Rule, FixedCapability>)
            return std::nullopt;
        else if constexpr (std::invocable<Rule, const Request&>)
            return capabilityOf(m_request);
        else
            return capabilityOf(bridges, m_request);
    }
    bool overwrites() const override {
        if constexpr (requires { m_request.overwrite; })
            return m_request.overwrite;
        else
            return false;
    }

protected:
    Request m_request;
};

template <auto call> auto invoke(const BridgeSet& bridges, auto request) {
    using Shape = CallShape<decltype(call)>;
    auto& bridge = bridgeOf<typename Shape::Bridge>(bridges);
    if constexpr (std::same_as<typename Shape::Argument, NoRequest>)
        return (bridge.*call)();
    else if constexpr (std::same_as<typename Shape::Argument, std::string>)
        return (bridge.*call)(std::move(request.identifier));
    else
        return (bridge.*call)(std::move(request));
}

// `Wrap` makes the result record; it sees the request where the call itself answers nothing.
template <auto call, auto capabilityOf, typename Wrap>
class PreparedCall : public Prepared<typename CallShape<decltype(call)>::Request, capabilityOf> {
    using Shape = CallShape<decltype(call)>;

public:
    using Prepared<typename Shape::Request, capabilityOf>::Prepared;

    Task<BridgeResponse> run(const BridgeSet& bridges, Responder responder) override {
        if constexpr (std::is_void_v<typename Shape::Result::Type>) {
            if constexpr (Shape::Result::waits) {
                auto pending = invoke<call>(bridges, this->m_request);
                co_await std::move(pending);
            } else {
                invoke<call>(bridges, this->m_request);
            }
            co_return responder.success(Wrap::result(this->m_request));
        } else if constexpr (Shape::Result::waits) {
            auto pending = invoke<call>(bridges, std::move(this->m_request));
            auto result = co_await std::move(pending);
            co_return responder.success(std::move(result));
        } else {
            co_return responder.success(invoke<call>(bridges, std::move(this->m_request)));
        }
    }
};

// The call takes nothing, but clients send a payload that must be well formed.
template <auto call, typename Ignored> class PreparedListing : public Prepared<Ignored, FixedCapability{}> {
public:
    using Prepared<Ignored, FixedCapability{}>::Prepared;

    Task<BridgeResponse> run(const BridgeSet& bridges, Responder responder) override {
        auto pending = invoke<call>(bridges, NoRequest{});
        auto result = co_await std::move(pending);
        co_return responder.success(std::move(result));
    }
};

template <typename Request> Request readRequest(const std::optional<JSONValue>& payload) {
    if constexpr (std::same_as<Request, NoRequest>)
        return {};
    else
        return decodePayload<Request>(payload);
}

template <typename Call, typename Request>
std::unique_ptr<PreparedOperation> prepare(const Operation&, const std::optional<JSONValue>& payload) {
    return std::make_unique<Call>(readRequest<Request>(payload));
}

struct NoWrap {};

template <auto member> struct DeletionResult {
    static BridgeDeleteResult result(const auto& request) { return {true, request.*member}; }
};

template <typename T> JSONValue describe(SchemaBook& book) {
    return book.describe<T>();
}

using Describe = JSONValue (*)(SchemaBook&);

template <typename Request> consteval Describe describeRequest() {
    if constexpr (std::same_as<Request, NoRequest>)
        return nullptr;
    else
        return &describe<Request>;
}

// Of what the call answers; where that is nothing, of what `Wrap` makes of the request.
template <auto call, typename Wrap> consteval Describe describeResult() {
    using Shape = CallShape<decltype(call)>;
    if constexpr (std::is_void_v<typename Shape::Result::Type>)
        return &describe<decltype(Wrap::result(std::declval<const typename Shape::Request&>()))>;
    else
        return &describe<typename Shape::Result::Type>;
}

// What every row has in common.
template <auto call, auto capabilityOf, typename Wrap>
consteval Operation callRow(std::string_view name, std::optional<BridgeCapability> capability,
                            std::span<const BridgeCapability> dependentCapabilities, Confirm confirm) {
    using Request = typename CallShape<decltype(call)>::Request;
    return {name,
            capability,
            dependentCapabilities,
            confirm,
            &prepare<PreparedCall<call, capabilityOf, Wrap>, Request>,
            describeRequest<Request>(),
            describeResult<call, Wrap>()};
}

} // namespace detail

template <auto call>
consteval Operation operation(std::string_view name, std::optional<BridgeCapability> capability,
                              Confirm confirm = Confirm::never) {
    return detail::callRow<call, detail::FixedCapability{}, detail::NoWrap>(name, capability, {}, confirm);
}

// For an operation whose switch depends on the request: capabilityOf(request) or capabilityOf(bridges, request), which
// answers with one of `capabilities`.
template <auto call, auto capabilityOf>
consteval Operation operation(std::string_view name, std::span<const BridgeCapability> capabilities,
                              Confirm confirm = Confirm::never) {
    return detail::callRow<call, capabilityOf, detail::NoWrap>(name, std::nullopt, capabilities, confirm);
}

// Always confirmed; answers with the identifier that `member` of the request holds.
template <auto call, auto member = &IdentifierPayload::identifier>
consteval Operation deletion(std::string_view name, BridgeCapability capability) {
    return detail::callRow<call, detail::FixedCapability{}, detail::DeletionResult<member>>(name, capability, {},
                                                                                            Confirm::always);
}

// For a call that answers nothing; the result of the wire is Wrap::result(request).
template <auto call, typename Wrap> consteval Operation act(std::string_view name, BridgeCapability capability) {
    return detail::callRow<call, detail::FixedCapability{}, Wrap>(name, capability, {}, Confirm::never);
}

// A payload that is decoded and otherwise ignored.
template <auto call, typename Ignored> consteval Operation listing(std::string_view name, BridgeCapability capability) {
    return {name,
            capability,
            {},
            Confirm::never,
            &detail::prepare<detail::PreparedListing<call, Ignored>, Ignored>,
            detail::describeRequest<Ignored>(),
            detail::describeResult<call, detail::NoWrap>()};
}

// For the static_assert below each table.
template <size_t count> consteval bool wellFormed(const std::array<Operation, count>& rows) {
    for (size_t index = 0; index < count; ++index)
        for (size_t other = index + 1; other < count; ++other)
            if (rows[index].name == rows[other].name) return false;
    return true;
}

} // namespace bridge
