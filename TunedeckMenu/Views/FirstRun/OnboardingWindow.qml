import QtQuick
import Tunedeck.Views

/// The first-run window.
Window {
    id: window

    readonly property onboardingContent view: Onboarding.content
    readonly property string error: view.error
    /// Still visible while it fades out.
    property string lastError
    readonly property real wantedHeight: Math.round(680 + (Theme.scale - 1) * 400)
    readonly property real wantedWidth: Math.round(560 + (Theme.scale - 1) * 320)
    /// Where there is little room, the page gets the logo's.
    readonly property bool compact: height < wantedHeight - 60

    color: Theme.window
    // Can be closed, but not minimized.
    flags: Qt.Window | Qt.CustomizeWindowHint | Qt.WindowTitleHint | Qt.WindowSystemMenuHint | Qt.WindowCloseButtonHint
    title: "Welcome to Tunedeck"

    onErrorChanged: if (error !== "")
        lastError = error

    Item {
        id: sheetArea

        readonly property int step: window.view.step

        anchors.horizontalCenter: parent.horizontalCenter
        focus: true
        height: parent.height
        // Not wider where a window manager gives the window more than it wants.
        width: Math.min(parent.width, window.wantedWidth * 1.2)

        // Return has just pressed "Continue": in its place, "Done" would end the first run with nothing connected.
        onStepChanged: if (step === window.view.stepCount - 1)
            sheetArea.forceActiveFocus()

        Keys.onEscapePressed: window.close()

        Item {
            id: top

            height: window.compact ? 64 : 112
            width: parent.width

            AppGlyph {
                anchors.horizontalCenter: parent.horizontalCenter
                size: window.compact ? 30 : 56
                y: window.compact ? 10 : 20
            }

            StepDots {
                anchors.bottom: parent.bottom
                anchors.bottomMargin: 8
                anchors.horizontalCenter: parent.horizontalCenter
            }
        }

        ScrollArea {
            id: page

            anchors.bottom: notice.top
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: top.bottom

            Accessible.name: window.view.title

            // Keep the success message, the last line, visible when an error banner appears.
            onMaximumOffsetChanged: if (window.view.connected)
                scrollBy(maximumOffset)

            OnboardingPage {
                id: sheet

                bottomPadding: 16
                leftPadding: 32
                rightPadding: 32
                topPadding: 8
                width: parent.width
            }
        }

        Notice {
            id: notice

            anchors.bottom: bar.top
            margin: 32
            shown: window.error !== ""
            text: window.lastError
            width: parent.width
        }

        Rectangle {
            anchors.bottom: bar.top
            color: Theme.separator
            height: 1
            visible: page.maximumOffset > 0
            width: parent.width
        }

        Item {
            id: bar

            anchors.bottom: parent.bottom
            height: Theme.largeControlHeight + 32
            width: parent.width

            PushButton {
                anchors.verticalCenter: parent.verticalCenter
                label: window.view.backButton
                large: true
                x: 32

                onClicked: Onboarding.actions.back()
            }

            PushButton {
                anchors.right: parent.right
                anchors.rightMargin: 32
                anchors.verticalCenter: parent.verticalCenter
                label: window.view.nextButton
                large: true
                prominent: true

                onClicked: Onboarding.actions.advance()
            }
        }

        HintBubble {
            anchors.fill: parent
        }
    }
}
