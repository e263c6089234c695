// The preview's window: a header, the view of the content, and a notice.
import QtQuick
import Tessaly.Controls
import Tessaly.QuickLook

Window {
    id: window

    required property PreviewState preview

    objectName: "quickLookWindow"
    title: preview.name
    flags: Qt.Dialog | Qt.WindowTitleHint | Qt.WindowSystemMenuHint | Qt.WindowCloseButtonHint
        | Qt.WindowMaximizeButtonHint
    minimumWidth: 320
    minimumHeight: 220
    color: Theme.bg

    Shortcut {
        sequence: "Escape"
        autoRepeat: false
        onActivated: window.close()
    }

    Shortcut {
        sequence: "Ctrl+W"
        autoRepeat: false
        onActivated: window.close()
    }

    Shortcut {
        sequence: "Ctrl+Q"
        autoRepeat: false
        onActivated: Qt.quit()
    }

    FocusScope {
        anchors.fill: parent
        focus: true

        // The key that opened the window may still be held.
        Keys.onSpacePressed: event => {
            if (!event.isAutoRepeat)
                window.close()
        }

        PreviewHeader {
            id: header

            objectName: "header"
            width: parent.width
            preview: window.preview
        }

        FocusScope {
            id: body

            objectName: "body"
            anchors.top: header.bottom
            anchors.bottom: notice.top
            width: parent.width
            focus: true

            LoadingView {
                objectName: "loadingView"
                anchors.fill: parent
                preview: window.preview
            }

            FactsView {
                objectName: "factsView"
                anchors.fill: parent
                preview: window.preview
            }

            ImageView {
                objectName: "imageView"
                anchors.fill: parent
                preview: window.preview
            }

            TextView {
                objectName: "textView"
                anchors.fill: parent
                preview: window.preview
            }

            PagesView {
                objectName: "pagesView"
                anchors.fill: parent
                preview: window.preview
            }

            FolderView {
                objectName: "folderView"
                anchors.fill: parent
                preview: window.preview
            }

            Connections {
                target: window.preview

                function onBegan() {
                    body.forceActiveFocus()
                }
            }
        }

        NoticeBar {
            id: notice

            objectName: "notice"
            anchors.bottom: parent.bottom
            width: parent.width
            height: window.preview.notice !== "" ? implicitHeight : 0
            preview: window.preview
        }
    }
}
