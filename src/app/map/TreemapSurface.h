// The treemap of one folder and its reactions to pointer and keyboard. All tiles and the
// selection are painted once into one picture; the highlighted tile is painted again into a small
// picture above it. So a move of the pointer repaints only the tile that it enters. A new layout is
// made when the folder, the size of the canvas, or the colours and marks of the tiles change.
//
// The arrow keys move from tile to tile. The current one is highlighted as if the pointer were on
// it, until the pointer moves or the canvas loses the keyboard focus.
//
// The session's focused item changes only when the pointer enters a tile, by a key, or by a click,
// but not when new tiles appear below the pointer or the keyboard's position. These are not
// highlighted either, since the highlight and the item that commands act on would then differ: the
// highlight stays on its item, moves to the focused item, or disappears.
//
// While the menu of an item or the question about it is open, its tile is highlighted whatever the
// pointer does, and without the tooltip, which would be below the menu.
//
// A drag draws a rubber band and selects the tiles that it touches. No tile is highlighted during
// the drag, nor afterwards until the pointer enters one.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include <QPointF>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

#include "app/map/BandGesture.h"
#include "app/map/BandItem.h"
#include "app/map/CanvasState.h"
#include "app/map/CanvasTiles.h"
#include "app/map/EscapeWatch.h"
#include "app/map/LabelPainter.h"
#include "app/map/PictureItem.h"
#include "app/map/TooltipState.h"
#include "app/model/NodeHandle.h"

namespace tessaly {

class TreemapSurface : public QQuickItem {
  Q_OBJECT
  QML_ELEMENT
  // Set once, before the component is complete.
  Q_PROPERTY(tessaly::CanvasState* map MEMBER map_ NOTIFY mapChanged REQUIRED)
  Q_PROPERTY(tessaly::NodeHandle node READ node WRITE setNode NOTIFY nodeChanged REQUIRED)

  Q_PROPERTY(tessaly::TooltipState* tooltip READ tooltip CONSTANT)
  // The index of the keyboard's tile; -1 for none.
  Q_PROPERTY(int keyboardTile READ keyboardTile NOTIFY keyboardTileChanged)
  // Whether the menu that was requested last is open.
  Q_PROPERTY(bool menuOpen READ isMenuOpen WRITE setMenuOpen NOTIFY menuOpenChanged)

 public:
  explicit TreemapSurface(QQuickItem* parent = nullptr);

  NodeHandle node() const { return node_; }
  void setNode(const NodeHandle& node);

  const std::optional<std::string>& hoverPath() const { return hoverPath_; }
  TooltipState* tooltip() { return &tooltip_; }

  // Takes over the focus from another canvas: on the tile of the session's focused item, or on none
  // before a key is pressed.
  Q_INVOKABLE void takeKeyboard();
  // Whether the keyboard moves between tiles, even if it is on none now.
  Q_INVOKABLE bool hasKeyboard() const { return keyboardPath_.has_value(); }
  int keyboardTile() const;

  bool isMenuOpen() const { return menuOpen_; }
  void setMenuOpen(bool open);

  // The same as a plain click, and as a click with Shift, for assistive tools.
  Q_INVOKABLE void press(const tessaly::NodeHandle& node);
  Q_INVOKABLE void toggle(const tessaly::NodeHandle& node);
  // Tells assistive tools that the keyboard focus is on `element`.
  Q_INVOKABLE void tellFocus(QQuickItem* element) const;

  const CanvasTiles& tiles() const { return tiles_; }
  // The pictures, from bottom to top: all tiles, the highlighted one, and the rubber band.
  const PictureItem& tileTexture() const { return *tileTexture_; }
  const PictureItem& hoverOverlay() const { return *hoverOverlay_; }
  const BandItem& band() const { return *bandItem_; }

 signals:
  // The user opens this folder.
  void open(const tessaly::NodeHandle& node);
  // The user requests the menu of this tile at a point of the canvas. Never for a remainder.
  void tileMenuAsked(const tessaly::NodeHandle& node, QPointF place, bool byKeyboard);
  // The user asks to move the item of this node to the Trash.
  void menu(const tessaly::NodeHandle& node);
  void mapChanged();
  void nodeChanged();
  void tilesChanged();
  void keyboardTileChanged();
  void menuOpenChanged();

 protected:
  void componentComplete() override;
  void updatePolish() override;
  void geometryChange(const QRectF& now, const QRectF& before) override;
  void itemChange(ItemChange change, const ItemChangeData& data) override;
  void hoverEnterEvent(QHoverEvent* event) override;
  void hoverMoveEvent(QHoverEvent* event) override;
  void hoverLeaveEvent(QHoverEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseUngrabEvent() override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void renew();
  void makeTiles();
  void setMouse(QPointF mouse);
  std::optional<std::size_t> tileUnderPointer();
  std::optional<std::size_t> tileToKeep();
  void comeTo(std::optional<std::size_t> index);
  void highlight(std::optional<std::size_t> index);
  void placeTooltip();
  bool hasFocus(const DiskNode& node) const;
  void showHighlight();
  void click(const DiskNode& node, Qt::KeyboardModifiers modifiers);
  void askForMenu(const DiskNode& node, QPointF place, bool byKeyboard);
  std::optional<std::string> menuPath() const;
  void followMenu();
  void drawBand();
  void selectBand(Qt::KeyboardModifiers modifiers);
  void dropBand();
  bool actOn(const QKeyEvent& event);
  std::optional<std::size_t> keyboardStart() const;
  void putKeyboardOn(std::size_t index);
  void takeKeyboardAway();
  double scale() const;

  CanvasState* map_ = nullptr;
  NodeHandle node_;
  CanvasTiles tiles_;
  LabelPainter labels_;
  PictureItem* tileTexture_;
  PictureItem* hoverOverlay_;
  BandItem* bandItem_;
  bool stale_ = true;  // the tiles are out of date

  QPointF mouse_;
  bool pointerInside_ = false;
  std::optional<std::string> hoverPath_;
  std::optional<std::size_t> hovered_;  // index of the tile at hoverPath_
  TooltipState tooltip_;
  std::optional<std::string> pressedPath_;
  BandGesture gesture_;
  // The tile under the pointer at the end of a drag. The pointer has not entered it since.
  std::optional<std::string> passedOverPath_;
  EscapeWatch escapeWatch_;
  // The item that the keyboard is on, even if it has no tile. It replaces the one under the
  // pointer.
  std::optional<std::string> keyboardPath_;
  std::string askedPath_;  // of the item whose menu was requested last
  bool menuOpen_ = false;
};

}  // namespace tessaly
