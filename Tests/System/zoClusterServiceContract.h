#pragma once

#include "zoTestCase.h"

#include <zoClusterService.h>

#include <functional>
#include <memory>

// What every cluster service promises, whatever it runs its nodes on. An implementation passes the suite by
// deriving a test class that says how its services are made:
//
//     class tst_MyServiceContract final : public zoClusterServiceContract
//     {
//         Q_OBJECT
//     public:
//         tst_MyServiceContract() : zoClusterServiceContract({createMine, createMineWithLittleMemory}) {}
//     };
//
// Services made in one test function meet on the same nodes; those of other runs and programs are not met.
class zoClusterServiceContract : public zoTestCase
{
    Q_OBJECT

public:
    struct Factory
    {
        std::function<std::unique_ptr<zoClusterService>()> create;
        // A service that finds too little memory for any node.
        std::function<std::unique_ptr<zoClusterService>()> createShortOfMemory;
        // How many nodes are many.
        int many = 1000;
        // Names of nodes that every start can have: all of "n1", "n2", ... unless it says otherwise.
        QString failing; // a node that cannot be started, with a reason that names this; empty for none
        // What a document needs beyond nodes, for a service that does not start without it; nothing by default.
        std::function<QString(const QString& document)> complete;
        bool takesGateways = true; // starts nodes behind one
        bool takesAnyName = true;  // as the name of a host, also one that no machine has
        QString silent;            // a node that never answers; empty for none
        // Makes a running node fail as if its machine had; nothing for a service that does not look.
        std::function<void(zoClusterService*, const QString& id)> lose;
        bool namesAllLosses = true; // of several at once; else one is lost, and the others are started again
        // Makes a running node hang; nothing for a service that does not look.
        std::function<void(zoClusterService*, const QString& id)> hang;
        // The same service, whose sessions end with the first lost node.
        std::function<std::unique_ptr<zoClusterService>()> createEndingWithLostNode;
    };

    explicit zoClusterServiceContract(Factory factory);
    ~zoClusterServiceContract() override;

private slots:
    void newServiceIsIdle();
    void appliedConfigurationIsCurrent();
    void appliedConfigurationIsNotAnnounced();

    void startRunsTheEnabledNodes();
    void idsFollowTheDocument_data();
    void idsFollowTheDocument();
    void handlerOfStartedSeesTheSession();
    void progressRisesNodeByNodeAndFinishesBeforeStarted();
    void startOfARunningSessionChangesNothing();
    void manyNodesStart();

    void stopEndsTheSession();
    void handlerOfStoppedSeesTheEnd();
    void stopAndAbortOfAnIdleServiceAreSilent();
    void abortOfARunningSessionChangesNothing();
    void sessionStartsAgainAfterStop();
    void sessionStoppedByItsStartedHandlerIsOver();

    void abortFromProgressEndsTheStart();
    void abortFromAnEventEndsTheStart();
    void stopWhileConnectingEndsTheStart();
    void sessionStartsAgainAfterAbort();
    void startWhileConnectingIsRefusedInSilence();
    void configurationWhileConnectingReachesTheSession();
    void quitWhileConnectingLetsTheStartReturn();
    void endOfTheApplicationEndsTheStart();
    void serviceDestroyedByItsProgressHandlerIsGone();
    void abortEndsTheWaitForASilentNode();
    void endOfTheApplicationEndsTheWaitForASilentNode();
    void startOfAnApplicationThatEndsReturns();
    void abortAtEveryStepEndsTheStart();
    void failedNodeIsNamedAndTheOthersAreFree();

    void unusableConfigurationFailsWithStopped_data();
    void unusableConfigurationFailsWithStopped();

    void secondSessionMeetsTheFirst();
    void answerInsideTheQuestionCountsForTheNextStart();
    void acceptedServersStart();
    void acceptanceCanBeTakenBack();
    void otherServicePortIsAnotherServer();
    void stoppedSessionFreesItsNodes();
    void destroyedServiceFreesItsNodes();
    void failedStartFreesItsNodes();
    void abortedStartFreesItsNodes();
    void sharedNodeStaysInUseUntilTheLastSessionLeaves();
    void abortInsideTheQuestionEndsTheStart();

    void lowMemoryAsks();
    void acceptedLowMemoryStarts();
    void bothQuestionsComeInOneAttempt();

    void nodesChangeWithTheConfigurationOfARunningSession();
    void sameNodesAreNotAnnouncedAgain();
    void malformedConfigurationLeavesARunningSessionAlone();
    void nodeThatLeftIsFree();
    void nodeThatJoinedIsInUse();
    void nodeInUseDoesNotJoinUninvited();

    void oneChangeForEachAppliedDocument();
    void failingJoinLeavesTheSessionAlone();

    void lostNodeLeavesTheSession();
    void lossesTogetherAreOneChange();
    void hungNodeIsLost();
    void stopDoesNotWaitForAHungNode();
    void lossOfAllNodesEndsTheSession();
    void sessionEndsWithItsFirstLostNodeIfThatIsWanted();
    void reportsNameEveryNode();

    void speedTestMeasuresARunningSession();
    void speedTestAfterALossMeasuresTheOthers();
    void speedTestOfAnIdleServiceIsEmpty();
    void diagnosticsAreSilent();

private:
    Factory m_factory;
};
