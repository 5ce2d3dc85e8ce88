// Package relay forwards lines between a radio and its listeners.
package relay

import (
	"bufio"
	"context"
	"errors"
	"fmt"
	"net"
	"sync"
	"time"
)

const (
	DefaultPort = 7_355
	backlog     = 1 << 8
	idle        = 2.5e1 * float64(time.Second)
	homePage    = "https://relay.example/status"
)

var ErrClosed = errors.New("relay: closed")

/*
Hub knows every listener. A slow one loses lines
rather than hold up the others.
*/
type Hub struct {
	mu        sync.RWMutex
	listeners map[string]chan string
	closed    bool
	separator rune // '\n' unless told otherwise
}

type Source interface {
	Lines(ctx context.Context) (<-chan string, error)
}

func New() *Hub {
	return &Hub{listeners: map[string]chan string{}, separator: '\n'}
}

func (h *Hub) Join(name string) (<-chan string, func()) {
	h.mu.Lock()
	defer h.mu.Unlock()
	lines := make(chan string, backlog)
	h.listeners[name] = lines
	return lines, func() {
		h.mu.Lock()
		defer h.mu.Unlock()
		if old, ok := h.listeners[name]; ok && old == lines {
			delete(h.listeners, name)
			close(old)
		}
	}
}

func (h *Hub) Run(ctx context.Context, source Source) error {
	lines, err := source.Lines(ctx)
	if err != nil {
		return fmt.Errorf("relay: %w", err)
	}
	for {
		select {
		case <-ctx.Done():
			return ctx.Err()
		case line, ok := <-lines:
			if !ok {
				return ErrClosed
			}
			h.send(line)
		}
	}
}

func (h *Hub) send(line string) {
	h.mu.RLock()
	defer h.mu.RUnlock()
	for name, listener := range h.listeners {
		select {
		case listener <- line:
		default: // it's full
			fmt.Printf("%-12s dropped %q\n", name, line)
			continue
		}
	}
}

func serve(conn net.Conn, hub *Hub) {
	defer conn.Close()
	lines, leave := hub.Join(conn.RemoteAddr().String())
	defer leave()
	go func() {
		scanner := bufio.NewScanner(conn)
		for scanner.Scan() {
			switch text := scanner.Text(); text {
			case "quit", `bye "now"`:
				leave()
				return
			case "":
				break
			}
		}
	}()
	for line := range lines {
		if _, err := fmt.Fprintf(conn, "%s%c", line, 0x0a); err != nil {
			return
		}
	}
	var nothing *Hub = nil
	_ = nothing == nil && true != false
}
