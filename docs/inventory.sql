-- The inventory database: written by ormasim, read by the inventory engine of platform/dao.
-- Portable between SQLite and PostgreSQL. Texts are UTF-8; absent texts are ''.

-- One row: the version of this layout.
CREATE TABLE inventory_version (version INTEGER NOT NULL);
INSERT INTO inventory_version (version) VALUES (1);

-- Subnet views. The root's parent is itself: obj_id and parent_id '102', topo_id 101.
CREATE TABLE subnet (
  obj_id        TEXT PRIMARY KEY,
  parent_id     TEXT NOT NULL,
  topo_id       INTEGER NOT NULL UNIQUE,
  native_id     TEXT NOT NULL,
  label         TEXT NOT NULL,
  type_id       INTEGER NOT NULL,
  topo_class_id INTEGER NOT NULL,
  icon_file     TEXT NOT NULL,
  ex_info       TEXT NOT NULL,
  pos_x         INTEGER NOT NULL,
  pos_y         INTEGER NOT NULL
);
CREATE INDEX subnet_parent ON subnet (parent_id);

-- Network elements. dev_id counts from 2; 1 is the management system itself and has no row.
CREATE TABLE device (
  dev_id       BIGINT PRIMARY KEY,
  native_id    TEXT NOT NULL UNIQUE,      -- 'NE=' and dev_id
  node_id      TEXT NOT NULL UNIQUE,      -- native_id behind its first '='
  node_class   TEXT NOT NULL,             -- 'ne' or 'container'
  subnet_id    TEXT NOT NULL REFERENCES subnet (obj_id),
  topo_id      INTEGER NOT NULL,
  main_type    INTEGER NOT NULL,          -- 0 to 65535
  sub_type     INTEGER NOT NULL,          -- 0 to 65535
  ip_address   TEXT NOT NULL,
  name         TEXT NOT NULL,
  version_name TEXT NOT NULL,
  origin       INTEGER NOT NULL,          -- 1: an origin element
  icon_file    TEXT NOT NULL,
  ex_info      TEXT NOT NULL,
  remark       TEXT NOT NULL,
  pos_x        INTEGER NOT NULL,
  pos_y        INTEGER NOT NULL
);
CREATE INDEX device_subnet ON device (subnet_id);

-- Where a device stands, outermost part first.
CREATE TABLE device_location (
  dev_id BIGINT NOT NULL REFERENCES device (dev_id),
  seq    INTEGER NOT NULL,
  part   TEXT NOT NULL,
  PRIMARY KEY (dev_id, seq)
);

-- Frames below a device: resources that are no devices.
CREATE TABLE frame (
  dev_id   BIGINT NOT NULL REFERENCES device (dev_id),
  frame_no INTEGER NOT NULL,
  label    TEXT NOT NULL,
  PRIMARY KEY (dev_id, frame_no)
);

-- Ports, addressed by their place in the device.
CREATE TABLE port (
  port_id BIGINT PRIMARY KEY,
  dev_id  BIGINT NOT NULL REFERENCES device (dev_id),
  frame   INTEGER NOT NULL,
  slot    INTEGER NOT NULL,
  card    INTEGER NOT NULL,
  port    INTEGER NOT NULL,
  name    TEXT NOT NULL,
  type    INTEGER NOT NULL,
  state_a INTEGER NOT NULL,
  state_b INTEGER NOT NULL,
  UNIQUE (dev_id, frame, slot, card, port)
);

-- Links between two ports. kind: 0 virtual, 105 layer 2, 204 IP.
CREATE TABLE link (
  link_id   BIGINT PRIMARY KEY,
  name      TEXT NOT NULL,
  kind      INTEGER NOT NULL,
  attribute INTEGER NOT NULL,
  a_port    BIGINT NOT NULL REFERENCES port (port_id),
  z_port    BIGINT NOT NULL REFERENCES port (port_id)
);
