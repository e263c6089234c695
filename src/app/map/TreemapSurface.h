// The drawing of one folder as a treemap, and what the pointer does to it. All tiles and the
// selection are painted once into one picture; the tile under the pointer is painted once more, as
// it looks highlighted, into a small picture above that. So moving the pointer repaints no tile but
// the one it has come to. The layout is made anew when the folder, the size of the canvas or what
// colours and marks the tiles has changed.
//
// The arrow keys go from tile to tile: the one they have come to is highlighted as if the pointer
// were on it, until the pointer moves or the keyboard goes elsewhere.
//
// The focus follows who moves: the pointer that comes to a tile, a key, a click. Tiles that are
// made anew below a pointer or under the keyboard never change it. Nor do they draw the highlight
// to themselves, which would then be on one item while the commands take another: it stays on the
// item that it was on, or comes to the one that has the focus, or goes.
//
// While the menu of an item is open, or the question what to do with it, its tile is highlighted
// whatever the pointer does, and without the tooltip, which would lie under the menu.
//
// A drag draws a rubber band and selects what it touches. No tile is highlighted meanwhile, nor
// afterwards until the pointer enters one.
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
  // The place of the tile that the keyboard is on among the tiles; -1 for none.
  Q_PROPERTY(int keyboardTile READ keyboardTile NOTIFY keyboardTileChanged)
  // Whether the menu that was last asked for is open.
  Q_PROPERTY(bool menuOpen READ isMenuOpen WRITE setMenuOpen NOTIFY menuOpenChanged)

 public:
  explicit TreemapSurface(QQuickItem* parent = nullptr);

  NodeHandle node() const { return node_; }
  void setNode(const NodeHandle& node);

  const std::optional<std::string>& hoverPath() const { return hoverPath_; }
  TooltipState* tooltip() { return &tooltip_; }

  // The keyboard goes on here that was on another canvas: on the tile of what has the focus, or on
  // none before a key is pressed.
  Q_INVOKABLE void takeKeyboard();
  // Whether it goes from tile to tile, even where it is on none at present.
  Q_INVOKABLE bool hasKeyboard() const { return keyboardPath_.has_value(); }
  int keyboardTile() const;

  bool isMenuOpen() const { return menuOpen_; }
  void setMenuOpen(bool open);

  // What a click without a key does, for who cannot click; and what one with Shift does.
  Q_INVOKABLE void press(const tessaly::NodeHandle& node);
  Q_INVOKABLE void toggle(const tessaly::NodeHandle& node);
  // Tells assistive programs that the keyboard is on `element`.
  Q_INVOKABLE void tellFocus(QQuickItem* element) const;

  const CanvasTiles& tiles() const { return tiles_; }
  // What is drawn, bottom first: all tiles, the highlighted one, and the rubber band.
  const PictureItem& tileTexture() const { return *tileTexture_; }
  const PictureItem& hoverOverlay() const { return *hoverOverlay_; }
  const BandItem& band() const { return *bandItem_; }

 signals:
  // The user wants to see what is inside this folder.
  void open(const tessaly::NodeHandle& node);
  // The user wants the menu of this tile, which stands for an item, at a point of the canvas.
  void tileMenuAsked(const tessaly::NodeHandle& node, QPointF place, bool byKeyboard);
  // The user wants the item of this node in the Trash.
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
  bool stale_ = true;  // the tiles no longer are what they would be if made now

  QPointF mouse_;
  bool pointerInside_ = false;
  std::optional<std::string> hoverPath_;
  std::optional<std::size_t> hovered_;  // place of the tile at hoverPath_ among the tiles
  TooltipState tooltip_;
  std::optional<std::string> pressedPath_;
  BandGesture gesture_;
  // The tile on which the pointer stood when a drag ended. It has not been entered since.
  std::optional<std::string> passedOverPath_;
  EscapeWatch escapeWatch_;
  // The item that the keyboard is on, whether or not it has a tile. It counts as the one under the
  // pointer.
  std::optional<std::string> keyboardPath_;
  std::string askedPath_;  // of the item whose menu was last asked for
  bool menuOpen_ = false;
};

}  // namespace tessaly
